#pragma once

#include "layout/UVLayout.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The edge of a triangle that runs from its corner `corner` to the next one.
struct TriangleEdge
{
    std::uint32_t triangle;
    std::uint32_t corner; ///< 0, 1 or 2

    std::uint32_t nextCorner() const { return corner == 2 ? 0 : corner + 1; }
    friend bool operator==(const TriangleEdge&, const TriangleEdge&) = default;
};

/// The edges at which a group of triangles ends.
///
///   groupOfTriangle  [triangleCount]  triangles of different groups never share an edge; those
///                                     with a negative group have no edges at all
///
/// An edge is inside its group when exactly two triangles of the group have it and walk it in
/// opposite directions. Every other edge is returned once for each triangle that has it, in order
/// of triangles; edges between a UV and itself are passed over. Linear, but for the sorting of
/// edges at one UV.
std::vector<TriangleEdge> openEdges(const UVLayout& layout,
                                    std::span<const std::int32_t> groupOfTriangle);

} // namespace uvtool
