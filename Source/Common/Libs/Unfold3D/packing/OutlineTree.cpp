#include "Unfold3D/packing/OutlineTree.h"

#include "Unfold3D/packing/Turned.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

Vec2 middle(const OutlineEdge& edge)
{
    return 0.5 * (edge.from + edge.to);
}

Box2 boxAround(std::span<const OutlineEdge> edges)
{
    Box2 box;
    for (const OutlineEdge& edge : edges) {
        box.add(edge.from);
        box.add(edge.to);
    }
    return box;
}

std::size_t highestNumber(const OutlineTree::Node& node)
{
    return node.isLeaf() ? node.number
                         : std::max(highestNumber(node.low()), highestNumber(node.high()));
}

} // namespace

OutlineTree::OutlineTree(std::vector<OutlineEdge> edges) : edges_(std::move(edges))
{
    if (edges_.empty())
        return;
    sort(root());
    boxes_.resize(highestNumber(root()) + 1);
    fitBoxes(root());
}

void OutlineTree::sort(const Node& node)
{
    if (node.isLeaf())
        return;
    Box2 middles;
    for (const OutlineEdge& edge : edges(node))
        middles.add(middle(edge));
    const bool byX = middles.width() >= middles.height();
    const auto at = [&](std::size_t i) { return edges_.begin() + static_cast<std::ptrdiff_t>(i); };
    std::nth_element(at(node.begin), at(node.low().end), at(node.end),
                     [byX](const OutlineEdge& a, const OutlineEdge& b) {
                         return byX ? middle(a).x < middle(b).x : middle(a).y < middle(b).y;
                     });
    sort(node.low());
    sort(node.high());
}

Box2 OutlineTree::fitBoxes(const Node& node)
{
    Box2& box = boxes_[node.number];
    if (node.isLeaf())
        return box = boxAround(edges(node));
    box = fitBoxes(node.low());
    box.add(fitBoxes(node.high()));
    return box;
}

OutlineTree OutlineTree::turnedBy(Vec2 turn) const
{
    OutlineTree result = *this;
    for (OutlineEdge& edge : result.edges_) {
        edge.from = turned(edge.from, turn);
        edge.to = turned(edge.to, turn);
    }
    if (!result.isEmpty())
        result.fitBoxes(root());
    return result;
}

} // namespace unfold3d
