#include "check/BoxTree.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace uvtool
{
namespace
{

/// Spreads the bits of a number so that a zero follows each.
std::uint64_t spreadBits(std::uint64_t bits)
{
    bits = (bits | (bits << 16U)) & 0x0000FFFF0000FFFFULL;
    bits = (bits | (bits << 8U)) & 0x00FF00FF00FF00FFULL;
    bits = (bits | (bits << 4U)) & 0x0F0F0F0F0F0F0F0FULL;
    bits = (bits | (bits << 2U)) & 0x3333333333333333ULL;
    bits = (bits | (bits << 1U)) & 0x5555555555555555ULL;
    return bits;
}

/// Places of the centres on a Z curve of 2^32 by 2^32 cells over all boxes.
std::vector<std::uint64_t> curvePlaces(std::span<const UVBox> boxes)
{
    UVBox all;
    for (const UVBox& box : boxes)
        all.add(box);

    const auto cell = [&](const UVBox& box, std::size_t axis) {
        const double extent = double(all.hi[axis]) - all.lo[axis];
        const double centre = (double(box.lo[axis]) + box.hi[axis]) / 2 - all.lo[axis];
        constexpr double lastCell = 4294967295.0;
        return extent > 0.0 ? static_cast<std::uint64_t>(centre / extent * lastCell) : 0U;
    };
    std::vector<std::uint64_t> places;
    places.reserve(boxes.size());
    for (const UVBox& box : boxes)
        places.push_back(spreadBits(cell(box, 0)) | (spreadBits(cell(box, 1)) << 1U));
    return places;
}

} // namespace

BoxTree::BoxTree(std::span<const UVBox> boxes, std::span<const std::int32_t> labels)
{
    assert(boxes.size() == labels.size());
    const std::vector<std::uint64_t> places = curvePlaces(boxes);
    std::vector<std::pair<std::uint64_t, std::uint32_t>> sorted;
    sorted.reserve(boxes.size());
    for (std::uint32_t item = 0; item < boxes.size(); ++item)
        sorted.emplace_back(places[item], item);
    std::sort(sorted.begin(), sorted.end());

    std::vector<Node> items;
    items.reserve(sorted.size());
    _order.reserve(sorted.size());
    for (const auto& [place, item] : sorted) {
        _order.push_back(item);
        items.push_back({boxes[item], labels[item]});
    }
    _levels.push_back(std::move(items));
    while (_levels.back().size() > 1)
        _levels.push_back(parentsOf(_levels.back()));
}

std::vector<BoxTree::Node> BoxTree::parentsOf(std::span<const Node> nodes)
{
    std::vector<Node> parents((nodes.size() + fanOut - 1) / fanOut);
    for (std::size_t child = 0; child < nodes.size(); ++child) {
        Node& parent = parents[child / fanOut];
        const bool agrees = child % fanOut == 0 || parent.label == nodes[child].label;
        parent.label = agrees ? nodes[child].label : mixedLabel;
        parent.box.add(nodes[child].box);
    }
    return parents;
}

} // namespace uvtool
