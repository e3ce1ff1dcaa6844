#pragma once

#include "Unfold3D/parameterisation/Flatten.h"

namespace unfold3d
{

struct RelaxResult
{
    std::vector<Vec2> uv; ///< [vertex]
    FlattenReport report;
    /// No triangle that can change is flipped, and the border crosses itself no more than allowed.
    bool isSound = false;
};

/// Brings a layout as near to an undistorted one as the options let it, from where it is: as
/// flatten(), but from a layout that may have flipped triangles or a border that crosses itself.
/// Flips are undone first, where that is possible. What can't be undone, or as much of it, stays.
///
/// uv  [vertex]  finite, about where a layout of area 1 around the origin would be; turned so that
///               most of it is counter-clockwise
RelaxResult relax(const IslandMesh& mesh, std::vector<Vec2> uv, const FlattenOptions& options,
                  const RunControl& control, const std::function<void(double)>& progress);

/// Moves vertices only as far as the straight lines of the options ask for, others along with them
/// where triangles would flip else. No triangle is flipped that wasn't. Lines that can't be had so
/// are left, with a warning.
FlattenResult straightenOnly(const IslandMesh& mesh, const std::vector<Vec2>& uv,
                             const FlattenOptions& options, const RunControl& control);

} // namespace unfold3d
