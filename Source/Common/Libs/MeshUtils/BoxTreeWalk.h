#pragma once

#include "MeshUtils/BoxTree.h"

#include <array>
#include <bit>
#include <cstdint>
#include <utility>

/// A distance for each child of a node.
struct ChildDistances
{
    Lanes halves[2];

    [[nodiscard]] unsigned int within(float limit) const
    {
        return bitsOf(halves[0] <= limit) | bitsOf(halves[1] <= limit) << 4;
    }
};

/// A child on the way of a walk: a leaf if it has triangles.
struct WalkChild
{
    float distance;
    std::uint32_t first;
    std::uint32_t count;
};

/// The children that a walk has still to look into.
class WalkStack
{
public:
    void push(const WalkChild& child) { children_[size_++] = child; }
    /// Takes children off until one lies within a limit. Returns false if none does.
    bool pop(float limit, WalkChild& child)
    {
        while (size_ > 0) {
            child = children_[--size_];
            if (child.distance <= limit)
                return true;
        }
        return false;
    }

private:
    unsigned int size_ = 0;
    std::array<WalkChild, (BoxNode::Width - 1) * BoxTree::MaxDepth> children_;
};

/// Goes on to the nearest of a node's children within a limit and puts the others on the stack.
/// Returns false if there is none.
inline bool descend(const BoxTree& tree, const BoxNode& node, const ChildDistances& lanes,
                    float limit, WalkStack& stack, WalkChild& current)
{
    const auto distances = std::bit_cast<std::array<float, BoxNode::Width>>(lanes);
    const auto childAt = [&](int firstHit) {
        const auto lane = static_cast<unsigned int>(firstHit);
        return WalkChild{distances[lane], node.first[lane], node.count[lane]};
    };
    unsigned int hits = lanes.within(limit);
    if (hits == 0)
        return false;
    current = childAt(std::countr_zero(hits));
    for (hits &= hits - 1; hits != 0; hits &= hits - 1) {
        WalkChild other = childAt(std::countr_zero(hits));
        if (other.distance < current.distance)
            std::swap(other, current);
        tree.prefetch(other.first, other.count);
        stack.push(other);
    }
    return true;
}

/// Walks through the children of a node, the nearest one first, and on down from them, as far as
/// they lie within a limit that may shrink on the way.
///
/// start        where to begin; 0 for the root
/// distancesOf  (node) to ChildDistances, in any unit that grows with the distance
/// limit        () to the largest distance that is still of interest
/// visit        (first packet, triangle count) looks at a leaf
template <class DistancesOf, class Limit, class Visit>
void walk(const BoxTree& tree, std::uint32_t start, const DistancesOf& distancesOf,
          const Limit& limit, const Visit& visit)
{
    WalkStack stack;
    WalkChild current{0, start, 0};
    do {
        while (current.count == 0) {
            const BoxNode& node = tree.nodes[current.first];
            if (!descend(tree, node, distancesOf(node), limit(), stack, current))
                break;
        }
        if (current.count > 0)
            visit(current.first, current.count);
    } while (stack.pop(limit(), current));
}
