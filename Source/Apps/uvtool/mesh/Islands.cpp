#include "mesh/Islands.h"

#include "mesh/DisjointSets.h"
#include "mesh/EdgeGroups.h"

namespace uvtool
{
namespace
{

constexpr std::int32_t noIsland = -1;

void labelTriangles(std::span<const std::uint32_t> triangles, std::size_t vertexCount,
                    Islands& islands)
{
    DisjointSets vertices(vertexCount);
    const std::size_t triangleCount = triangles.size() / 3;
    for (std::size_t t = 0; t < triangleCount; ++t) {
        if (repeatsVertex(triangles, t))
            continue;
        vertices.join(triangles[3 * t], triangles[3 * t + 1]);
        vertices.join(triangles[3 * t], triangles[3 * t + 2]);
    }

    std::vector<std::int32_t> islandOfSet(vertexCount, noIsland);
    islands.ofTriangle.assign(triangleCount, noIsland);
    for (std::size_t t = 0; t < triangleCount; ++t) {
        if (repeatsVertex(triangles, t))
            continue;
        std::int32_t& island = islandOfSet[vertices.find(triangles[3 * t])];
        if (island == noIsland) {
            island = static_cast<std::int32_t>(islands.isClosed.size());
            islands.isClosed.push_back(1);
        }
        islands.ofTriangle[t] = island;
    }
    for (std::size_t t = 0; t < triangleCount; ++t) {
        if (repeatsVertex(triangles, t))
            islands.ofTriangle[t] = islandOfSet[vertices.find(triangles[3 * t])];
    }
}

} // namespace

Islands findIslands(std::span<const std::uint32_t> triangles, std::size_t vertexCount)
{
    Islands islands;
    labelTriangles(triangles, vertexCount, islands);
    const EdgeGroups edges(triangles, vertexCount);
    for (std::size_t e = 0; e < edges.size(); ++e) {
        const std::span<const std::uint32_t> sides = edges[e];
        if (sides.size() == 1) {
            ++islands.borderEdges;
            islands.isClosed[static_cast<std::size_t>(islands.ofTriangle[sides[0] / 3])] = 0;
        } else if (sides.size() > 2 || triangles[sides[0]] == triangles[sides[1]]) {
            ++islands.sharedEdges;
        }
    }
    return islands;
}

} // namespace uvtool
