#include "mesh/VertexFans.h"

#include "mesh/DisjointSets.h"
#include "mesh/EdgeGroups.h"

namespace uvtool
{

void separateVertexFans(std::vector<std::uint32_t>& triangles, std::size_t& vertexCount)
{
    DisjointSets corners(triangles.size());
    const EdgeGroups edges(triangles, vertexCount);
    for (std::size_t e = 0; e < edges.size(); ++e) {
        if (edges[e].size() != 2)
            continue;
        const std::uint32_t side = edges[e][0];
        const std::uint32_t other = edges[e][1]; // runs the other way
        corners.join(side, endCorner(other));
        corners.join(endCorner(side), other);
    }
    std::vector<char> isTaken(vertexCount, 0);
    for (std::uint32_t c = 0; c < triangles.size(); ++c) {
        const std::uint32_t lowest = corners.find(c);
        if (lowest != c)
            triangles[c] = triangles[lowest];
        else if (isTaken[triangles[c]] != 0)
            triangles[c] = static_cast<std::uint32_t>(vertexCount++);
        else
            isTaken[triangles[c]] = 1;
    }
}

} // namespace uvtool
