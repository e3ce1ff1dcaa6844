#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A surface with fewer vertices and the same connections, to ask questions of at less cost.
struct CoarseMesh
{
    std::vector<Vec3> positions; ///< [coarse vertex]
    std::vector<Triangle> triangles;
    std::vector<int> vertexOf; ///< [coarse vertex] the vertex of the fine surface that it is
    std::vector<int> coarseOf; ///< [fine vertex] the coarse vertex that it went to

    int vertexCount() const { return static_cast<int>(positions.size()); }
};

/// Takes vertices away, evenly, until about `vertexCount` are left, or no more can go without
/// bending the surface or changing its connections. One that has no more than that stays as it is.
///
/// Which vertices go is decided by the connections, not by lengths: so it is the same wherever the
/// mesh lies, of whatever size it is, and but for ties however it is numbered. Every vertex has to
/// be the middle of one fan of triangles. Near linear. Throws Stopped.
CoarseMesh coarsened(std::span<const Vec3> positions, std::span<const Triangle> triangles,
                     int vertexCount, const RunControl& control);

} // namespace unfold3d
