#pragma once

#include "MeshUtils/BoxNode.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// For each node of a tree a box into which nothing reaches that lies outside of the node's part of
/// the tree. A search that stays within it can begin at the node, and need not come down from the
/// root.
class ClearBoxes
{
public:
    ClearBoxes() = default;
    /// nodes          each after its parent, the root first
    /// firstOfPacket  triangles; one more at the end
    ///
    /// Linear.
    ClearBoxes(std::span<const BoxNode> nodes, std::span<const std::uint32_t> firstOfPacket);

    /// The lowest node above a triangle whose part of the tree holds all boxes that are within a
    /// square distance of a place, as these distances come out in float.
    [[nodiscard]] std::uint32_t lowestNode(std::size_t triangle, const std::array<float, 3>& place,
                                           float limit) const
    {
        const Lanes at = {place[0], place[1], place[2], 0};
        std::uint32_t node = nodeOfTriangle_[triangle];
        while (!boxes_[node].holds(at, limit))
            node = parents_[node];
        return node;
    }

private:
    /// The last lane has room for anything.
    struct Box
    {
        Lanes lower;
        Lanes upper;

        [[nodiscard]] bool holds(const Lanes& at, float limit) const
        {
            const Lanes room = smaller(at - lower, upper - at);
            constexpr unsigned int all = 0xFU;
            return bitsOf((room > 0.F) & (room * room > limit)) == all;
        }
        void cutOff(const SearchBox& own, const SearchBox& other);
    };

    void addChildren(std::uint32_t parent, std::span<const BoxNode> nodes,
                     std::span<const std::uint32_t> firstOfPacket);

    std::vector<Box> boxes_;                    ///< [node] that of the root is all of space
    std::vector<std::uint32_t> parents_;        ///< [node]
    std::vector<std::uint32_t> nodeOfTriangle_; ///< [packed triangle] the one above its leaf
};
