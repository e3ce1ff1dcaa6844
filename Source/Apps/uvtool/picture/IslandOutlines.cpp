#include "picture/IslandOutlines.h"

namespace uvtool
{
namespace
{

constexpr std::uint32_t noEdge = 0xFFFFFFFFU;

/// The open edges sorted by island; those of island i are [offsets[i], offsets[i + 1]).
struct EdgesByIsland
{
    std::vector<std::uint32_t> offsets;
    std::vector<std::uint32_t> from;
    std::vector<std::uint32_t> to;
};

EdgesByIsland sortByIsland(const UVLayout& layout, std::span<const std::int32_t> groupOfTriangle,
                           std::span<const TriangleEdge> open, std::size_t islandCount)
{
    const auto islandOf = [&](const TriangleEdge& edge) {
        return static_cast<std::size_t>(groupOfTriangle[edge.triangle]);
    };
    EdgesByIsland sorted{std::vector<std::uint32_t>(islandCount + 1, 0),
                         std::vector<std::uint32_t>(open.size()),
                         std::vector<std::uint32_t>(open.size())};
    for (const TriangleEdge& edge : open)
        ++sorted.offsets[islandOf(edge) + 1];
    for (std::size_t i = 0; i < islandCount; ++i)
        sorted.offsets[i + 1] += sorted.offsets[i];
    std::vector<std::uint32_t> next(sorted.offsets.begin(), sorted.offsets.end() - 1);
    for (const TriangleEdge& edge : open) {
        const std::size_t first = 3 * std::size_t{edge.triangle};
        const std::uint32_t at = next[islandOf(edge)]++;
        sorted.from[at] = layout.corners[first + edge.corner];
        sorted.to[at] = layout.corners[first + edge.nextCorner()];
    }
    return sorted;
}

/// Walks along the edges of one island after another. The edges that begin at a UV and have not
/// been walked yet form a list: its head by UV, the next one by edge.
class EdgeWalker
{
public:
    EdgeWalker(const EdgesByIsland& edges, std::size_t uvCount)
        : edges_(edges), firstAt_(uvCount, noEdge), nextAt_(edges.from.size(), noEdge)
    {}

    void walkIsland(std::uint32_t begin, std::uint32_t end, IslandOutlines& outlines)
    {
        for (std::uint32_t edge = end; edge-- > begin;) {
            nextAt_[edge] = firstAt_[edges_.from[edge]];
            firstAt_[edges_.from[edge]] = edge;
        }
        for (std::uint32_t edge = begin; edge < end; ++edge) {
            while (firstAt_[edges_.from[edge]] != noEdge)
                walkLoop(edges_.from[edge], outlines);
        }
    }

private:
    void walkLoop(std::uint32_t start, IslandOutlines& outlines)
    {
        std::uint32_t at = start;
        while (firstAt_[at] != noEdge) {
            const std::uint32_t edge = firstAt_[at];
            firstAt_[at] = nextAt_[edge];
            outlines.uvs.push_back(at);
            at = edges_.to[edge];
            if (at == start)
                break;
        }
        outlines.loopOffsets.push_back(static_cast<std::uint32_t>(outlines.uvs.size()));
    }

    const EdgesByIsland& edges_;
    std::vector<std::uint32_t> firstAt_;
    std::vector<std::uint32_t> nextAt_;
};

} // namespace

IslandOutlines chainOutlines(const UVLayout& layout, std::span<const std::int32_t> groupOfTriangle,
                             std::span<const TriangleEdge> open, std::size_t islandCount)
{
    const EdgesByIsland edges = sortByIsland(layout, groupOfTriangle, open, islandCount);
    EdgeWalker walker(edges, layout.uvs.size());
    IslandOutlines outlines;
    outlines.islandOffsets.push_back(0);
    for (std::size_t island = 0; island < islandCount; ++island) {
        walker.walkIsland(edges.offsets[island], edges.offsets[island + 1], outlines);
        outlines.islandOffsets.push_back(
            static_cast<std::uint32_t>(outlines.loopOffsets.size() - 1));
    }
    return outlines;
}

} // namespace uvtool
