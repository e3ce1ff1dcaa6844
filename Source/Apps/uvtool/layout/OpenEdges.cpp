#include "layout/OpenEdges.h"

#include <algorithm>
#include <cassert>
#include <tuple>

namespace uvtool
{
namespace
{

/// An edge of a triangle, filed under the lower of its two UVs.
struct FiledEdge
{
    std::uint32_t highUV;
    std::int32_t group;
    bool upward;        ///< walked from the lower UV to the higher
    std::uint32_t edge; ///< 3 * triangle + corner

    auto key() const { return std::tie(highUV, group, upward, edge); }
    bool isSameEdge(const FiledEdge& other) const
    {
        return highUV == other.highUV && group == other.group;
    }
};

std::uint32_t nextInTriangle(std::uint32_t edge)
{
    return edge % 3 == 2 ? edge - 2 : edge + 1;
}

/// All edges, bucketed by their lower UV: those of UV i are [offsets[i], offsets[i + 1]).
struct EdgeFile
{
    std::vector<std::uint32_t> offsets;
    std::vector<FiledEdge> edges;
};

EdgeFile fileEdges(const UVLayout& layout, std::span<const std::int32_t> groupOfTriangle)
{
    const auto edgeCount = static_cast<std::uint32_t>(layout.corners.size());
    const auto counts = [&](std::uint32_t edge) {
        return groupOfTriangle[edge / 3] >= 0 &&
               layout.corners[edge] != layout.corners[nextInTriangle(edge)];
    };
    const auto lowUV = [&](std::uint32_t edge) {
        return std::min(layout.corners[edge], layout.corners[nextInTriangle(edge)]);
    };

    EdgeFile file;
    file.offsets.assign(layout.uvs.size() + 1, 0);
    for (std::uint32_t edge = 0; edge < edgeCount; ++edge)
        if (counts(edge))
            ++file.offsets[lowUV(edge) + 1];
    for (std::size_t uv = 0; uv < layout.uvs.size(); ++uv)
        file.offsets[uv + 1] += file.offsets[uv];

    file.edges.resize(file.offsets.back());
    std::vector<std::uint32_t> next(file.offsets.begin(), file.offsets.end() - 1);
    for (std::uint32_t edge = 0; edge < edgeCount; ++edge) {
        if (!counts(edge))
            continue;
        const std::uint32_t from = layout.corners[edge];
        const std::uint32_t to = layout.corners[nextInTriangle(edge)];
        file.edges[next[lowUV(edge)]++] = {std::max(from, to), groupOfTriangle[edge / 3], from < to,
                                           edge};
    }
    return file;
}

} // namespace

std::vector<TriangleEdge> openEdges(const UVLayout& layout,
                                    std::span<const std::int32_t> groupOfTriangle)
{
    assert(layout.corners.size() == 3 * groupOfTriangle.size());
    EdgeFile file = fileEdges(layout, groupOfTriangle);

    std::vector<bool> isOpen(layout.corners.size(), false);
    for (std::size_t uv = 0; uv + 1 < file.offsets.size(); ++uv) {
        const auto begin = file.edges.begin() + file.offsets[uv];
        const auto end = file.edges.begin() + file.offsets[uv + 1];
        std::sort(begin, end,
                  [](const FiledEdge& a, const FiledEdge& b) { return a.key() < b.key(); });
        for (auto first = begin; first != end;) {
            const auto last = std::find_if(
                first, end, [&](const FiledEdge& edge) { return !edge.isSameEdge(*first); });
            const bool isInside = last - first == 2 && first->upward != (first + 1)->upward;
            for (; first != last; ++first)
                isOpen[first->edge] = !isInside;
        }
    }

    std::vector<TriangleEdge> open;
    for (std::uint32_t edge = 0; edge < isOpen.size(); ++edge)
        if (isOpen[edge])
            open.push_back({edge / 3, edge % 3});
    return open;
}

} // namespace uvtool
