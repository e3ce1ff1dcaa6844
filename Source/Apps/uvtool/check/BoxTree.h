#pragma once

#include "layout/UVBox.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Finds boxes by place: a packed tree over items that are sorted along a Z curve.
///
/// Items are numbered as they are given. Each has a label; a node knows the label of all items
/// below it, or that they differ, so that a search can pass over everything of one label.
class BoxTree
{
public:
    /// Label of a node whose items have different ones. No item has it.
    static constexpr std::int32_t mixedLabel = -1;

    /// boxes, labels  [itemCount]. Sorting: n log n.
    BoxTree(std::span<const UVBox> boxes, std::span<const std::int32_t> labels);

    /// The items along the Z curve: neighbours here are near each other.
    std::span<const std::uint32_t> order() const { return _order; }

    /// Calls use(item) for every item that `keep(const UVBox&, std::int32_t label)` lets through;
    /// keep is asked for the nodes above an item first, and must be true for a box that contains
    /// one for which it is true.
    template <class Keep, class Use>
    void visit(const Keep& keep, const Use& use) const
    {
        if (!_order.empty())
            visitNode(_levels.size() - 1, 0, keep, use);
    }

private:
    static constexpr std::size_t fanOut = 8;

    struct Node
    {
        UVBox box;
        std::int32_t label = mixedLabel;
    };

    static std::vector<Node> parentsOf(std::span<const Node> nodes);

    template <class Keep, class Use>
    void visitNode(std::size_t level, std::size_t number, const Keep& keep, const Use& use) const
    {
        const Node& node = _levels[level][number];
        if (!keep(node.box, node.label))
            return;
        if (level == 0) {
            use(_order[number]);
            return;
        }
        const std::size_t end = std::min((number + 1) * fanOut, _levels[level - 1].size());
        for (std::size_t child = number * fanOut; child < end; ++child)
            visitNode(level - 1, child, keep, use);
    }

    std::vector<std::uint32_t> _order;
    std::vector<std::vector<Node>> _levels; ///< the items in order, their parents, ... one root
};

} // namespace uvtool
