#include "UVUtils/repair/TrianglesOfEdges.h"

#include "UVUtils/model/EdgeRuns.h"

TrianglesOfEdges collectTrianglesOfEdges(std::span<const unsigned int> triangles)
{
    const std::size_t sideCount = triangles.size() / 3 * 3;
    TrianglesOfEdges table;
    table.edgeOfSide.resize(sideCount);
    table.triangles.reserve(sideCount);
    table.edges.reserve(sideCount / 2);
    table.offsets.reserve(sideCount / 2 + 1);
    table.offsets.push_back(0);
    const auto visitAll = [triangles](const auto& add) { visitSides(triangles, add); };
    forEachEdge(
        endOfIds(triangles), visitAll, [&](const Edge& edge, std::span<const EdgePlace> sides) {
            for (const EdgePlace& side : sides) {
                table.edgeOfSide[side.place] = static_cast<unsigned int>(table.edges.size());
                table.triangles.push_back(side.place / 3);
            }
            table.edges.push_back(edge);
            table.offsets.push_back(static_cast<unsigned int>(table.triangles.size()));
        });
    return table;
}
