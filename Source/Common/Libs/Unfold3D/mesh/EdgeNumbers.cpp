#include "Unfold3D/mesh/EdgeNumbers.h"

#include "Unfold3D/base/SortedBuckets.h"

#include <algorithm>
#include <compare>
#include <span>

namespace unfold3d
{

EdgeNumbers numberEdges(const std::vector<Triangle>& triangles)
{
    // Visit 3 t + i walks from corner (i + 2) % 3 to corner i: (c, a), (a, b), (b, c).
    struct Visit
    {
        int high; ///< the upper end of the edge
        int order;
        auto operator<=>(const Visit&) const = default;
    };
    int vertexCount = 0;
    for (const Triangle& corner : triangles)
        vertexCount = std::max(vertexCount, 1 + *std::max_element(corner.begin(), corner.end()));
    const auto atLowEnd = sortedBuckets<Visit>(vertexCount, [&](const auto& put) {
        int order = 0;
        for (const Triangle& corner : triangles)
            for (std::size_t i = 0; i < 3; ++i) {
                const auto [low, high] = std::minmax(corner[(i + 2) % 3], corner[i]);
                put(low, Visit{high, order++});
            }
    });

    std::vector<int> firstVisit(3 * triangles.size());
    for (int low = 0; low < vertexCount; ++low) {
        const std::span<const Visit> visits = atLowEnd[low];
        for (std::size_t i = 0, first = 0; i < visits.size(); ++i) {
            if (visits[i].high != visits[first].high)
                first = i;
            firstVisit[static_cast<std::size_t>(visits[i].order)] = visits[first].order;
        }
    }

    EdgeNumbers edges;
    edges.ofTriangle.resize(triangles.size());
    std::vector<int> numberOfVisit(firstVisit.size());
    for (std::size_t visit = 0; visit < firstVisit.size(); ++visit) {
        const auto first = static_cast<std::size_t>(firstVisit[visit]);
        const std::size_t t = visit / 3;
        const std::size_t i = visit % 3;
        if (first == visit) {
            numberOfVisit[visit] = edges.count();
            const auto [low, high] = std::minmax(triangles[t][(i + 2) % 3], triangles[t][i]);
            edges.vertices.push_back({low, high});
        }
        edges.ofTriangle[t][(i + 2) % 3] = numberOfVisit[first];
    }
    return edges;
}

} // namespace unfold3d
