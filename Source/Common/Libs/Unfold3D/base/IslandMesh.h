#pragma once

#include "Unfold3D/base/Vec.h"

#include <array>
#include <vector>

namespace unfold3d
{

/// The three vertices of a triangle, counter-clockwise in the plane it is laid into.
using Triangle = std::array<int, 3>;

/// The surface of one island, ready for a solve: numbered from 0, oriented, normalised.
///
///   positions  [vertex]    in space, moved to the origin and scaled so that the area of the island
///                          is 1; every vertex is used by a triangle
///   triangles  [triangle]  wound consistently: an edge is walked at most once in each direction.
///                          None has a corner twice, none stands twice. One without area in space
///                          may stand here to close the surface; base/RestTriangle.h gives every
///                          triangle the shape to measure it by.
///
/// Triangles hang together through shared vertices. Two fans of triangles may meet in one vertex
/// only; such a vertex has one UV all the same.
struct IslandMesh
{
    std::vector<Vec3> positions;
    std::vector<Triangle> triangles;

    int vertexCount() const { return static_cast<int>(positions.size()); }
    int triangleCount() const { return static_cast<int>(triangles.size()); }
};

} // namespace unfold3d
