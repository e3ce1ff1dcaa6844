#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/MakePieces.h"
#include "Unfold3D/packing/PackOptions.h"

#include <string>
#include <vector>

namespace unfold3d
{

/// Where an island goes: the UV point p goes to
///     place + stretch * (turnAndScale * (p - pivot)),
/// with the product of complex numbers inside and one factor for each axis outside.
struct IslandMove
{
    int island = 0;
    Vec2 pivot;
    Vec2 turnAndScale{1.0, 0.0};
    Vec2 stretch{1.0, 1.0};
    Vec2 place;

    Vec2 operator()(Vec2 p) const;
};

struct PackResult
{
    std::vector<IslandMove> moves; ///< one for each island that was to be packed
    double shrunkBy = 1.0;         ///< below 1 when the layout had to be made smaller to fit
    std::string method;            ///< what found the layout, for a log
    /// Share of the tiles that the islands cover, and what no layout of them exceeds. What an
    /// island covers twice counts twice. 0 where islands may not be moved.
    double covered = 0.0;
    double mostCovered = 0.0;
};

/// Packs islands into the box or the tiles of the options.
///
/// islands  to be packed; all others stay and are in the way where they touch a tile
///
/// In the result the islands keep the spacing to each other and the margin to the sides of their
/// tile, also after their UVs are rounded to floats. None is mirrored, and but for the stretch of
/// LayoutScaling::Stretch, their sizes have the stated relation to about 1e-15. An exact test of
/// all outlines stands behind that; a layout that doesn't pass it is replaced by a simpler one.
///
/// Throws std::invalid_argument with a text for the user when the islands can't be packed so, and
/// Stopped. The same result on every run and for every number of threads.
PackResult packIslands(const UVLayout& layout, const std::vector<int>& islands,
                       const PackOptions& options, RunControl& control);

} // namespace unfold3d
