#include "Unfold3D/mesh/EdgeNumbers.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace unfold3d
{

EdgeNumbers numberEdges(const std::vector<Triangle>& triangles)
{
    // Visit 3 t + i walks from corner (i + 2) % 3 to corner i: (c, a), (a, b), (b, c).
    struct Visit
    {
        std::int64_t ends;
        std::int64_t order;
    };
    std::vector<Visit> visits;
    visits.reserve(3 * triangles.size());
    for (const Triangle& corner : triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto [low, high] = std::minmax(corner[(i + 2) % 3], corner[i]);
            visits.push_back({(static_cast<std::int64_t>(low) << 32) | high,
                              static_cast<std::int64_t>(visits.size())});
        }
    std::sort(visits.begin(), visits.end(), [](const Visit& a, const Visit& b) {
        return a.ends != b.ends ? a.ends < b.ends : a.order < b.order;
    });

    std::vector<std::int64_t> firstVisit(visits.size());
    for (std::size_t i = 0, first = 0; i < visits.size(); ++i) {
        if (visits[i].ends != visits[first].ends)
            first = i;
        firstVisit[static_cast<std::size_t>(visits[i].order)] = visits[first].order;
    }

    EdgeNumbers edges;
    edges.ofTriangle.resize(triangles.size());
    std::vector<int> numberOfVisit(visits.size());
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
