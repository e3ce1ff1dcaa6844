#include "mesh/EdgeGroups.h"

#include <algorithm>
#include <array>

namespace uvtool
{

EdgeGroups::EdgeGroups(std::span<const std::uint32_t> triangles, std::size_t vertexCount)
{
    const auto lower = [&](std::uint32_t side) {
        return std::min(triangles[side], triangles[endCorner(side)]);
    };
    const auto higher = [&](std::uint32_t side) {
        return std::max(triangles[side], triangles[endCorner(side)]);
    };

    // A counting sort by the lower vertex leaves a handful of sides to sort at each vertex.
    std::vector<std::uint32_t> firstOfVertex(vertexCount + 1, 0);
    const auto sideCount = static_cast<std::uint32_t>(triangles.size());
    for (std::uint32_t side = 0; side < sideCount; ++side) {
        if (!repeatsVertex(triangles, side / 3))
            ++firstOfVertex[lower(side) + 1];
    }
    for (std::size_t v = 0; v < vertexCount; ++v)
        firstOfVertex[v + 1] += firstOfVertex[v];
    sides_.resize(firstOfVertex[vertexCount]);
    std::vector<std::uint32_t> next(firstOfVertex.begin(), firstOfVertex.end() - 1);
    for (std::uint32_t side = 0; side < sideCount; ++side) {
        if (!repeatsVertex(triangles, side / 3))
            sides_[next[lower(side)]++] = side;
    }

    offsets_.push_back(0);
    for (std::size_t v = 0; v < vertexCount; ++v) {
        const std::uint32_t begin = firstOfVertex[v];
        const std::uint32_t end = firstOfVertex[v + 1];
        std::sort(sides_.begin() + begin, sides_.begin() + end,
                  [&](std::uint32_t a, std::uint32_t b) {
                      return higher(a) != higher(b) ? higher(a) < higher(b) : a < b;
                  });
        for (std::uint32_t i = begin; i < end; ++i) {
            if (i + 1 == end || higher(sides_[i]) != higher(sides_[i + 1]))
                offsets_.push_back(i + 1);
        }
    }
}

std::optional<std::size_t> findEdge(const EdgeGroups& edges,
                                    std::span<const std::uint32_t> triangles, std::uint32_t a,
                                    std::uint32_t b)
{
    const auto ordered = [](std::uint32_t one, std::uint32_t other) {
        return std::array{std::min(one, other), std::max(one, other)};
    };
    const auto endsOf = [&](std::size_t edge) {
        const std::uint32_t side = edges[edge].front();
        return ordered(triangles[side], triangles[endCorner(side)]);
    };
    const auto wanted = ordered(a, b);
    std::size_t low = 0;
    std::size_t high = edges.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (endsOf(middle) < wanted)
            low = middle + 1;
        else
            high = middle;
    }
    if (low < edges.size() && endsOf(low) == wanted)
        return low;
    return std::nullopt;
}

} // namespace uvtool
