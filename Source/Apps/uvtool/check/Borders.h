#pragma once

#include "check/BoxTree.h"
#include "layout/UVBox.h"
#include "layout/UVLayout.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// A piece of a border. Its triangle lies on the left of the way from `from` to `to`.
struct BorderSegment
{
    std::array<float, 2> from;
    std::array<float, 2> to;
    std::uint32_t triangle;
    std::int32_t island;

    UVBox box() const
    {
        UVBox box;
        box.add(from);
        box.add(to);
        return box;
    }
};

/// Everywhere that the number of triangles over a point changes, and a tree to find it by place;
/// the labels of the tree are the islands.
///
/// Triangles that turn the other way than their neighbours have a border with them: there the
/// layout is folded. Triangles without an area cover nothing and have no border.
struct Borders
{
    std::vector<BorderSegment> segments; ///< in order of triangles
    BoxTree tree;
};

/// signOfTriangle  [triangleCount]  1, -1 or 0 as the triangle turns; 0 also leaves it out
Borders findBorders(const UVLayout& layout, std::span<const std::int8_t> signOfTriangle);

} // namespace uvtool
