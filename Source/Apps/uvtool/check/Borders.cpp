#include "check/Borders.h"

#include "layout/OpenEdges.h"

#include <utility>

namespace uvtool
{
namespace
{

/// Triangles of one island that turn the same way: across an edge between two of them the number
/// of triangles over a point stays the same.
std::vector<std::int32_t> groupsOfOneTurn(const UVLayout& layout,
                                          std::span<const std::int8_t> signOfTriangle)
{
    std::vector<std::int32_t> groups(layout.triangleCount(), -1);
    for (std::size_t t = 0; t < groups.size(); ++t)
        if (signOfTriangle[t] != 0 && layout.islandOfTriangle[t] >= 0)
            groups[t] = 2 * layout.islandOfTriangle[t] + (signOfTriangle[t] < 0 ? 1 : 0);
    return groups;
}

} // namespace

Borders findBorders(const UVLayout& layout, std::span<const std::int8_t> signOfTriangle)
{
    std::vector<BorderSegment> segments;
    std::vector<UVBox> boxes;
    std::vector<std::int32_t> islands;
    for (const TriangleEdge edge : openEdges(layout, groupsOfOneTurn(layout, signOfTriangle))) {
        BorderSegment segment{layout.point(edge.triangle, edge.corner),
                              layout.point(edge.triangle, edge.nextCorner()), edge.triangle,
                              layout.islandOfTriangle[edge.triangle]};
        if (signOfTriangle[edge.triangle] < 0)
            std::swap(segment.from, segment.to);
        segments.push_back(segment);
        boxes.push_back(segment.box());
        islands.push_back(segment.island);
    }
    return {std::move(segments), BoxTree(boxes, islands)};
}

} // namespace uvtool
