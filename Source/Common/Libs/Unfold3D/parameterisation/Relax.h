#pragma once

#include "Unfold3D/parameterisation/Flatten.h"

namespace unfold3d
{

struct RelaxResult
{
    std::vector<Vec2> uv; ///< [vertex]
    FlattenReport report; ///< its border crossings are always counted
    int flips = 0;        ///< triangles that can change and are flipped
    bool wasTangled = false;
};

/// Brings a layout as near to an undistorted one as the options let it, from where it is: as
/// flatten(), but from a layout that may have flipped triangles or a border that crosses itself.
/// Flips are undone first, where that is possible; else the layout is one with few of them. The
/// border crosses itself no more often than it did, unless it had to be untangled.
///
/// Where vertices are fixed and a layout can't be untangled from where it is, or only so that it
/// lies over itself, it is tried again from one that continues the fixed part.
///
/// uv  [vertex]  finite, about where a layout of area 1 around the origin would be; turned so that
///               most of it is counter-clockwise
RelaxResult relax(const IslandMesh& mesh, std::vector<Vec2> uv, const FlattenOptions& options,
                  const RunControl& control, const std::function<void(double)>& progress);

/// Moves vertices only as far as the straight lines of the options ask for, others along with them
/// where triangles would flip else. No more triangles are flipped than before. Lines that can't be
/// had so are left, with a warning.
FlattenResult straightenOnly(const IslandMesh& mesh, const std::vector<Vec2>& uv,
                             const FlattenOptions& options, const RunControl& control);

} // namespace unfold3d
