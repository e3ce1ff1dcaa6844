#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// An order of the vertices and triangles of a surface that depends on their connections and not on
/// the numbers they came with: so that ties, which go to the lower number, go the same way however
/// a mesh was numbered. Where a surface has a symmetry, any of its halves may come first.
struct CanonicalOrder
{
    std::vector<int> triangleAt;   ///< [place] the triangle that comes there
    std::vector<char> firstCorner; ///< [place] its corner that comes first
    std::vector<int> placeOf;      ///< [vertex] its place
};

/// A walk over the triangles, breadth first, from the place of each part whose surroundings are
/// like those of the fewest others (seams/ConnectionHash.h), and of those that are alike from the
/// one farthest out.
///
/// positions, isOnBorder  [vertex]
/// triangles              oriented; every vertex is the middle of one fan
/// twin                   [half-edge] -1 on the border
/// Near linear.
CanonicalOrder canonicalOrder(std::span<const Vec3> positions, std::span<const char> isOnBorder,
                              std::span<const Triangle> triangles, std::span<const int> twin,
                              const RunControl& control);

} // namespace unfold3d
