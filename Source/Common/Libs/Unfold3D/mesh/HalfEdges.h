#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The edges of a list of triangles, seen from each side. Half-edge 3 t + i runs from corner i of
/// triangle t to the next corner.
///
///   twin  [half-edge]  the half-edge that lies on it, whichever way that one runs; or border, when
///                      no other does; or crowded, when there are several
struct HalfEdges
{
    std::vector<int> twin;

    static constexpr int border = -1;
    static constexpr int crowded = -2;

    bool isBorder(int h) const { return twin[static_cast<std::size_t>(h)] == border; }
};

/// Linear in the triangles for meshes whose vertices have few triangles each.
HalfEdges pairHalfEdges(std::span<const Triangle> triangles, int vertexCount);

/// The next half-edge of the same triangle, and the one before.
inline int nextHalfEdge(int h)
{
    return h % 3 == 2 ? h - 2 : h + 1;
}
inline int previousHalfEdge(int h)
{
    return h % 3 == 0 ? h + 2 : h - 1;
}

/// Where a half-edge begins, and where it ends.
inline int originOf(std::span<const Triangle> triangles, int h)
{
    return triangles[static_cast<std::size_t>(h / 3)][static_cast<std::size_t>(h % 3)];
}
inline int targetOf(std::span<const Triangle> triangles, int h)
{
    return originOf(triangles, nextHalfEdge(h));
}

} // namespace unfold3d
