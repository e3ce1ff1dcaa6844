#pragma once

#include "MeshUtils/SearchSpace.h"

#include <cstdint>
#include <vector>

/// A node of a tree of boxes: up to Width children, one a lane, component by component so that all
/// are compared in one go. A lane without a child has an empty box.
template <unsigned int Width>
struct alignas(64) BoxNode
{
    float lower[3][Width];
    float upper[3][Width];
    std::uint32_t first[Width]; ///< the first triangle of a leaf, or the number of a node
    std::uint32_t count[Width]; ///< of triangles in a leaf; 0 for a node

    BoxNode()
    {
        for (unsigned int lane = 0; lane < Width; ++lane)
            setChild(lane, SearchBox::empty(), 0, 0);
    }

    void setChild(unsigned int lane, const SearchBox& box, std::uint32_t firstOfChild,
                  std::uint32_t countOfChild)
    {
        for (unsigned int i = 0; i < 3; ++i) {
            lower[i][lane] = box.lower[i];
            upper[i][lane] = box.upper[i];
        }
        first[lane] = firstOfChild;
        count[lane] = countOfChild;
    }
};

/// A tree of boxes over packed triangles. Node 0 is the root; there is none without triangles.
template <unsigned int Width>
struct BoxTree
{
    /// Nodes on the way from the root to a leaf; builders stay below it.
    static constexpr unsigned int MaxDepth = 40;

    std::vector<BoxNode<Width>> nodes;
    SearchSpace space;
};
