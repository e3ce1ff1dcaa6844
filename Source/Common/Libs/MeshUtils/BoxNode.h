#pragma once

#include "MeshUtils/Lanes.h"
#include "MeshUtils/SearchSpace.h"

#include <cstdint>

/// A node of a tree of boxes: up to eight children, one a lane, component by component so that all
/// are compared in one go. A lane without a child has an empty box.
struct alignas(64) BoxNode
{
    static constexpr unsigned int Width = 8;

    Lanes lower[3][2];
    Lanes upper[3][2];
    std::uint32_t first[Width]; ///< the first packet of a leaf, or the number of a node
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
            lower[i][lane / 4][lane % 4] = box.lower[i];
            upper[i][lane / 4][lane % 4] = box.upper[i];
        }
        first[lane] = firstOfChild;
        count[lane] = countOfChild;
    }

    [[nodiscard]] SearchBox boxOf(unsigned int lane) const
    {
        SearchBox box = SearchBox::empty();
        for (unsigned int i = 0; i < 3; ++i) {
            box.lower[i] = lower[i][lane / 4][lane % 4];
            box.upper[i] = upper[i][lane / 4][lane % 4];
        }
        return box;
    }
    [[nodiscard]] bool hasChild(unsigned int lane) const { return !boxOf(lane).isEmpty(); }
};
