#pragma once

#include "MeshUtils/BoxNode.h"
#include "MeshUtils/ClearBoxes.h"
#include "MeshUtils/LeafPlanes.h"

#include <cstdint>
#include <vector>

/// A tree of boxes over packed triangles. A leaf has its triangles in packets of up to four, one
/// after the other.
struct BoxTree
{
    /// Nodes on the way from the root to a leaf; builders stay below it.
    static constexpr unsigned int MaxDepth = 40;
    static constexpr std::size_t PacketSize = 4;

    std::vector<BoxNode> nodes;               ///< each after its parent, the root first
    std::vector<std::uint32_t> firstOfPacket; ///< triangles; one more at the end
    std::vector<LeafPlanes> planes;           ///< of each packet
    ClearBoxes clearBoxes;
    SearchSpace space;

    /// Adds the packets of a leaf whose triangles follow those of the last one. Returns the first.
    std::uint32_t addLeaf(std::size_t begin, std::size_t count)
    {
        const auto leaf = static_cast<std::uint32_t>(firstOfPacket.size());
        for (std::size_t i = 0; i < count; i += PacketSize)
            firstOfPacket.push_back(static_cast<std::uint32_t>(begin + i));
        return leaf;
    }
    /// To be called once all nodes and leaves are there and the triangles are in their order.
    void finishLeaves(std::span<const SortedTriangle> triangles)
    {
        planes.reserve(firstOfPacket.size());
        firstOfPacket.push_back(static_cast<std::uint32_t>(triangles.size()));
        for (std::size_t i = 0; i + 1 < firstOfPacket.size(); ++i)
            planes.push_back(LeafPlanes::of(packet(i, triangles), space));
        clearBoxes = ClearBoxes(nodes, firstOfPacket);
    }
    /// Sends for what a walk will look at soon: a leaf with triangles, or a node.
    void prefetch(std::uint32_t first, std::uint32_t count) const
    {
        const char* const what = count > 0 ? reinterpret_cast<const char*>(&planes[first])
                                           : reinterpret_cast<const char*>(&nodes[first]);
        for (unsigned int line = 0; line < 4; ++line)
            __builtin_prefetch(what + std::size_t{64} * line);
    }
    [[nodiscard]] std::span<const SortedTriangle>
    packet(std::size_t i, std::span<const SortedTriangle> triangles) const
    {
        return triangles.subspan(firstOfPacket[i], firstOfPacket[i + 1] - firstOfPacket[i]);
    }
};
