#include "Unfold3D/mesh/HalfEdges.h"

#include <algorithm>

namespace unfold3d
{

HalfEdges pairHalfEdges(std::span<const Triangle> triangles, int vertexCount)
{
    HalfEdges edges;
    edges.twin.assign(3 * triangles.size(), HalfEdges::border);
    const EdgeSides sides = edgeSides(triangles, vertexCount, [](int) { return true; });
    forEachEdge(sides, [&](int, std::span<const EdgeSide> ofEdge) {
        if (ofEdge.size() == 2) {
            edges.twin[static_cast<std::size_t>(ofEdge[0].halfEdge)] = ofEdge[1].halfEdge;
            edges.twin[static_cast<std::size_t>(ofEdge[1].halfEdge)] = ofEdge[0].halfEdge;
        } else if (ofEdge.size() > 2) {
            for (const EdgeSide& side : ofEdge)
                edges.twin[static_cast<std::size_t>(side.halfEdge)] = HalfEdges::crowded;
        }
    });
    return edges;
}

} // namespace unfold3d
