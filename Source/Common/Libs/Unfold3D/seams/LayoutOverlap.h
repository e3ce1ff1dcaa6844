#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <span>

namespace unfold3d
{

/// Where a layout lies over itself most.
struct LayoutOverlap
{
    double share = 0.0; ///< of the area that it covers, what is covered more than once
    int triangleA = -1;
    int triangleB = -1; ///< two that lie over each other, in the middle of the largest such place;
                        ///< -1 where there is none
};

/// Looks at the layout on a raster of about a hundred cells on a side: what is smaller than a cell
/// goes unseen. Linear in triangles and cells.
///
/// uv  [vertex]
LayoutOverlap findOverlap(std::span<const Triangle> triangles, std::span<const Vec2> uv);

} // namespace unfold3d
