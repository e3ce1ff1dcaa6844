#include "MeshUtils/ClearBoxes.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr float Endless = std::numeric_limits<float>::infinity();

} // namespace

ClearBoxes::ClearBoxes(std::span<const BoxNode> nodes, std::span<const std::uint32_t> firstOfPacket)
    : boxes_(nodes.size(), Box{lanesOf(-Endless), lanesOf(Endless)}), parents_(nodes.size()),
      nodeOfTriangle_(firstOfPacket.back())
{
    for (std::uint32_t node = 0; node < nodes.size(); ++node)
        addChildren(node, nodes, firstOfPacket);
}

void ClearBoxes::addChildren(std::uint32_t parent, std::span<const BoxNode> nodes,
                             std::span<const std::uint32_t> firstOfPacket)
{
    const BoxNode& node = nodes[parent];
    for (unsigned int lane = 0; lane < BoxNode::Width; ++lane) {
        const std::uint32_t child = node.first[lane];
        if (node.count[lane] > 0)
            std::fill_n(nodeOfTriangle_.begin() + firstOfPacket[child], node.count[lane], parent);
        if (node.count[lane] > 0 || !node.hasChild(lane))
            continue;
        parents_[child] = parent;
        boxes_[child] = boxes_[parent];
        for (unsigned int other = 0; other < BoxNode::Width; ++other)
            if (other != lane && node.hasChild(other))
                boxes_[child].cutOff(node.boxOf(lane), node.boxOf(other));
    }
}

/// Ends the box where another one begins: on the side of the node's own box where that takes the
/// smallest part of it away.
void ClearBoxes::Box::cutOff(const SearchBox& own, const SearchBox& other)
{
    float least = Endless;
    int axis = 0;
    bool isAbove = false;
    for (unsigned int i = 0; i < 3; ++i) {
        const float perExtent = 1 / std::max(own.upper[i] - own.lower[i], 1e-30F);
        const float lostAbove = (own.upper[i] - other.lower[i]) * perExtent;
        const float lostBelow = (other.upper[i] - own.lower[i]) * perExtent;
        if (std::min(lostAbove, lostBelow) >= least)
            continue;
        least = std::min(lostAbove, lostBelow);
        axis = static_cast<int>(i);
        isAbove = lostAbove < lostBelow;
    }
    const auto at = static_cast<std::size_t>(axis);
    if (isAbove)
        upper[axis] = std::min(upper[axis], other.lower[at]);
    else
        lower[axis] = std::max(lower[axis], other.upper[at]);
}
