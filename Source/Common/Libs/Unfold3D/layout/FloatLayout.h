#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// Which coordinates of a vertex must stay as they are rounded; bits that can be joined.
enum HeldCoordinate : std::uint8_t
{
    HoldNone = 0,
    HoldU = 1,
    HoldV = 2
};

struct FloatRounding
{
    int moved = 0;     ///< vertices that lie elsewhere than at the nearest floats
    int flipsLeft = 0; ///< triangles that don't turn counter-clockwise, by an exact test
};

/// Rounds the layout of an island to floats, as a caller will store it, so that no triangle flips:
/// where a plain rounding would, vertices move by a few steps of the float grid. The coordinates
/// stay doubles and are floats in value.
///
/// triangles  all counter-clockwise in uv
/// uv         [vertex]  finite, within the range of floats; rounded in place
/// held       [vertex]  may be empty, which holds nothing
///
/// Layouts in which floats are much finer than the triangles are done in one pass. In a layout that
/// is too thin for floats flips may be left over; the answer counts them. The same on every run.
FloatRounding roundToFloats(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
                            std::span<const std::uint8_t> held = {});

} // namespace unfold3d
