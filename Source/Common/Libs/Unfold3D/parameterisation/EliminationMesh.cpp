#include "Unfold3D/parameterisation/EliminationMesh.h"

#include <algorithm>
#include <numeric>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The positions of the triangles in their list, ordered by the lowest of their columns; ties keep
/// their order.
std::vector<int> orderByLowestColumn(std::span<const Triangle> triangles,
                                     std::span<const int> columnOfVertex)
{
    std::vector<int> lowest(triangles.size());
    std::vector<int> next(columnOfVertex.size() + 1, 0);
    for (std::size_t t = 0; t < lowest.size(); ++t) {
        const auto& [a, b, c] = triangles[t];
        lowest[t] = std::min({columnOfVertex[at(a)], columnOfVertex[at(b)], columnOfVertex[at(c)]});
        ++next[at(lowest[t]) + 1];
    }
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<int> order(lowest.size());
    for (std::size_t t = 0; t < lowest.size(); ++t)
        order[at(next[at(lowest[t])]++)] = static_cast<int>(t);
    return order;
}

SymbolicCholesky analyseVertices(const MovablePart& part, std::span<const int> oldOfNew,
                                 const RunControl& control)
{
    control.checkpoint();
    const VertexGraph graph = vertexGraph(part.corners, part.mesh.vertexCount());
    control.checkpoint();
    return oldOfNew.empty() ? analyse(graph, control)
                            : analyse(graph, {oldOfNew.begin(), oldOfNew.end()}, control);
}

} // namespace

EliminationMesh::EliminationMesh(const MovablePart& part, std::span<const int> oldOfNew,
                                 const RunControl& control)
    : EliminationMesh(part, analyseVertices(part, oldOfNew, control), control)
{}

EliminationMesh::EliminationMesh(const MovablePart& part, SymbolicCholesky analysis,
                                 const RunControl& control)
    : symbolic(std::move(analysis))
{
    control.checkpoint();
    triangles.reserve(part.triangles.size());
    double area = 0.0;
    for (const int t : orderByLowestColumn(part.corners, symbolic.newOfOld)) {
        Triangle corners = part.corners[at(t)];
        for (int& corner : corners)
            corner = symbolic.newOfOld[at(corner)];
        triangles.push_back(
            {corners,
             {symbolic.entryOf(corners[0], corners[1]), symbolic.entryOf(corners[1], corners[2]),
              symbolic.entryOf(corners[2], corners[0])},
             TriangleMetric(restTriangle(part.mesh, part.triangles[at(t)]))});
        area += triangles.back().metric.area;
    }
    // Stand-ins for triangles without height add a little to the area of the surface.
    for (FlatTriangle& triangle : triangles)
        triangle.metric.area /= area;
    control.checkpoint();
}

std::vector<Vec2> EliminationMesh::toColumns(std::span<const Vec2> ofNodes) const
{
    std::vector<Vec2> ofColumns(ofNodes.size());
    for (std::size_t column = 0; column < ofColumns.size(); ++column)
        ofColumns[column] = ofNodes[at(symbolic.oldOfNew[column])];
    return ofColumns;
}

std::vector<Vec2> EliminationMesh::toNodes(std::span<const Vec2> ofColumns) const
{
    std::vector<Vec2> ofNodes(ofColumns.size());
    for (std::size_t node = 0; node < ofNodes.size(); ++node)
        ofNodes[node] = ofColumns[at(symbolic.newOfOld[node])];
    return ofNodes;
}

} // namespace unfold3d
