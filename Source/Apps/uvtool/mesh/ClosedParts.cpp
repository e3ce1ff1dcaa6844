#include "mesh/ClosedParts.h"

#include "mesh/DisjointSets.h"
#include "mesh/EdgeGroups.h"

#include <map>
#include <utility>

namespace uvtool
{
namespace
{

struct Parts
{
    std::vector<std::uint32_t> ofTriangle; ///< the lowest triangle of the part
    std::vector<char> isOpen;              ///< by that triangle
};

Parts findParts(const std::vector<std::uint32_t>& triangles, std::size_t vertexCount)
{
    const std::size_t triangleCount = triangles.size() / 3;
    const EdgeGroups edges(triangles, vertexCount);
    DisjointSets joined(triangleCount);
    for (std::size_t e = 0; e < edges.size(); ++e)
        for (const std::uint32_t side : edges[e])
            joined.join(edges[e][0] / 3, side / 3);

    Parts parts{std::vector<std::uint32_t>(triangleCount), std::vector<char>(triangleCount, 0)};
    for (std::uint32_t t = 0; t < triangleCount; ++t)
        parts.ofTriangle[t] = joined.find(t);
    for (std::size_t e = 0; e < edges.size(); ++e)
        if (edges[e].size() == 1)
            parts.isOpen[parts.ofTriangle[edges[e][0] / 3]] = 1;
    return parts;
}

/// The part that keeps each vertex: the lowest open one that uses it, else the lowest.
std::vector<std::uint32_t> keepersOfVertices(const std::vector<std::uint32_t>& triangles,
                                             std::size_t vertexCount, const Parts& parts)
{
    constexpr std::uint32_t none = 0xFFFFFFFFU;
    std::vector<std::uint32_t> keeper(vertexCount, none);
    for (const bool wantsOpen : {true, false})
        for (std::size_t i = 0; i < triangles.size(); ++i) {
            const std::uint32_t part = parts.ofTriangle[i / 3];
            if (keeper[triangles[i]] == none && (parts.isOpen[part] != 0) == wantsOpen)
                keeper[triangles[i]] = part;
        }
    return keeper;
}

} // namespace

void detachClosedParts(std::vector<std::uint32_t>& triangles, std::size_t& vertexCount)
{
    const Parts parts = findParts(triangles, vertexCount);
    const std::vector<std::uint32_t> keeper = keepersOfVertices(triangles, vertexCount, parts);
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> copies; // few, if any
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const std::uint32_t part = parts.ofTriangle[i / 3];
        const std::uint32_t vertex = triangles[i];
        if (parts.isOpen[part] != 0 || keeper[vertex] == part)
            continue;
        const auto copy =
            copies.try_emplace({part, vertex}, static_cast<std::uint32_t>(vertexCount)).first;
        triangles[i] = copy->second;
        vertexCount += copy->second == vertexCount ? 1U : 0U;
    }
}

} // namespace uvtool
