#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/SortedBuckets.h"

#include <algorithm>
#include <compare>
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

/// A half-edge at the lower of its ends.
struct EdgeSide
{
    int high; ///< the other end
    int halfEdge;

    auto operator<=>(const EdgeSide&) const = default;
};

/// [vertex] the half-edges of which it is the lower end, those of one edge beside each other and
/// ascending
using EdgeSides = OffsetArray<EdgeSide>;

/// Of the triangles for which takesPart(triangle).
template <class Predicate>
EdgeSides edgeSides(std::span<const Triangle> triangles, int vertexCount,
                    const Predicate& takesPart)
{
    return sortedBuckets<EdgeSide>(vertexCount, [&](const auto& put) {
        for (int t = 0; t < static_cast<int>(triangles.size()); ++t) {
            if (!takesPart(t))
                continue;
            for (int h = 3 * t; h < 3 * t + 3; ++h) {
                const int from = originOf(triangles, h);
                const int to = targetOf(triangles, h);
                put(std::min(from, to), EdgeSide{std::max(from, to), h});
            }
        }
    });
}

/// Calls visit(lower end, sides) for each edge, by its lower end and then by the other.
template <class Visit>
void forEachEdge(const EdgeSides& sides, const Visit& visit)
{
    for (int low = 0; low < sides.size(); ++low) {
        const std::span<const EdgeSide> at = sides[low];
        for (std::size_t begin = 0, end = 0; begin < at.size(); begin = end) {
            while (end < at.size() && at[end].high == at[begin].high)
                ++end;
            visit(low, at.subspan(begin, end - begin));
        }
    }
}

} // namespace unfold3d
