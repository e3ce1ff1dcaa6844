#pragma once

#include "MeshUtils/BoxTree.h"

#include <array>
#include <cstdint>

/// The children that a walk through a tree has still to look into, the nearest on top.
template <unsigned int Width>
class BoxStack
{
public:
    struct Entry
    {
        float distance;
        std::uint32_t first;
        std::uint32_t count;
    };

    BoxStack() { entries_[size_++] = {0, 0, 0}; } // the root
    [[nodiscard]] bool isEmpty() const { return size_ == 0; }
    Entry pop() { return entries_[--size_]; }

    /// Puts the children of a node that lie within a limit on top.
    void push(const BoxNode<Width>& node, const std::array<float, Width>& distances, float limit)
    {
        const unsigned int bottom = size_;
        for (unsigned int lane = 0; lane < Width; ++lane)
            if (distances[lane] <= limit)
                insert({distances[lane], node.first[lane], node.count[lane]}, bottom);
    }

private:
    void insert(const Entry& entry, unsigned int bottom)
    {
        unsigned int at = size_++;
        for (; at > bottom && entries_[at - 1].distance < entry.distance; --at)
            entries_[at] = entries_[at - 1];
        entries_[at] = entry;
    }

    unsigned int size_ = 0;
    std::array<Entry, (Width - 1) * BoxTree<Width>::MaxDepth + 1> entries_;
};

/// Walks through the children of a tree, the nearer ones first, as far as they lie within a limit
/// that may shrink on the way.
///
/// distancesOf  (node) to the distances of its children, in any unit that grows with the distance
/// limit        () to the largest distance that is still of interest
/// visit        (first, count) looks at the triangles of a leaf
template <unsigned int Width, class DistancesOf, class Limit, class Visit>
void walk(const BoxTree<Width>& tree, const DistancesOf& distancesOf, const Limit& limit,
          const Visit& visit)
{
    BoxStack<Width> stack;
    while (!stack.isEmpty()) {
        const auto entry = stack.pop();
        if (entry.distance > limit())
            continue;
        if (entry.count > 0) {
            visit(entry.first, entry.count);
            continue;
        }
        const BoxNode<Width>& node = tree.nodes[entry.first];
        stack.push(node, distancesOf(node), limit());
    }
}
