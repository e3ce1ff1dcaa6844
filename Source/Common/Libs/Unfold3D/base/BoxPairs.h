#pragma once

#include "Unfold3D/base/Box2.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace unfold3d
{

/// Finds the pairs of boxes that meet, for boxes of which neighbours in the list are mostly
/// neighbours in the plane, such as those of the edges along a border. A binary tree over the list
/// as it stands: nothing is sorted, building it is one pass.
class BoxPairs
{
public:
    explicit BoxPairs(std::vector<Box2> boxes) : boxes_(std::move(boxes))
    {
        const std::size_t leaves = (boxes_.size() + leafSize - 1) / leafSize;
        while (firstLeaf_ < leaves)
            firstLeaf_ *= 2;
        nodes_.resize(2 * firstLeaf_);
        for (std::size_t i = 0; i < boxes_.size(); ++i)
            nodes_[firstLeaf_ + i / leafSize].add(boxes_[i]);
        for (std::size_t node = firstLeaf_; --node > 0;) {
            nodes_[node].add(nodes_[2 * node]);
            nodes_[node].add(nodes_[2 * node + 1]);
        }
    }

    /// Calls visit(i, j) for all i < j whose boxes are at most `margin` apart, until a call returns
    /// false; the order is fixed by the list. Returns false when it ended so.
    template <class Visit>
    bool forEachNear(double margin, const Visit& visit) const
    {
        return boxes_.empty() || withinNode(1, margin, visit);
    }

private:
    static constexpr std::size_t leafSize = 4;

    template <class Visit>
    bool withinNode(std::size_t node, double margin, const Visit& visit) const
    {
        if (node >= firstLeaf_)
            return betweenLeaves(node, node, margin, visit);
        return withinNode(2 * node, margin, visit) && withinNode(2 * node + 1, margin, visit) &&
               betweenNodes(2 * node, 2 * node + 1, margin, visit);
    }
    template <class Visit>
    bool betweenNodes(std::size_t a, std::size_t b, double margin, const Visit& visit) const
    {
        if (!nodes_[a].isNear(nodes_[b], margin))
            return true;
        if (a >= firstLeaf_)
            return betweenLeaves(a, b, margin, visit);
        return betweenNodes(2 * a, 2 * b, margin, visit) &&
               betweenNodes(2 * a, 2 * b + 1, margin, visit) &&
               betweenNodes(2 * a + 1, 2 * b, margin, visit) &&
               betweenNodes(2 * a + 1, 2 * b + 1, margin, visit);
    }
    template <class Visit>
    bool betweenLeaves(std::size_t a, std::size_t b, double margin, const Visit& visit) const
    {
        const std::size_t beginA = (a - firstLeaf_) * leafSize;
        const std::size_t beginB = (b - firstLeaf_) * leafSize;
        const std::size_t endA = std::min(beginA + leafSize, boxes_.size());
        const std::size_t endB = std::min(beginB + leafSize, boxes_.size());
        for (std::size_t i = beginA; i < endA; ++i)
            for (std::size_t j = a == b ? i + 1 : beginB; j < endB; ++j)
                if (boxes_[i].isNear(boxes_[j], margin) &&
                    !visit(static_cast<int>(i), static_cast<int>(j)))
                    return false;
        return true;
    }

    std::vector<Box2> boxes_;
    std::vector<Box2> nodes_; ///< node n has the children 2 n and 2 n + 1; the root is 1
    std::size_t firstLeaf_ = 1;
};

} // namespace unfold3d
