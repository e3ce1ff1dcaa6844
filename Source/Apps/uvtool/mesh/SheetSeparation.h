#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// What was done to make a triangle list manifold.
struct SheetReport
{
    std::size_t separatedEdges = 0;    ///< edges that more than a pair of triangles, or two in the
                                       ///< same direction, ran along
    std::size_t doubledTriangles = 0;  ///< triangles over the same three vertices as an earlier one
    std::size_t detachedTriangles = 0; ///< triangles that had to be cut off on all sides
};

/// Splits vertices so that every edge belongs to one triangle, or to two that run along it in
/// opposite directions.
///
///   triangles    [3 * n]  vertices; rewritten. Triangles that name a vertex twice keep together
///                         with their neighbours and are otherwise passed over
///   vertexCount           grows by the vertices that are split off
///
/// Triangles over the same three vertices (the two sides of a sheet without thickness) end on
/// sheets of their own, each connected in itself. Where three or more sheets meet at an edge they
/// all let go of each other. Only vertices of such edges are split: two parts that touch in a
/// single vertex stay joined there. Old vertices keep their numbers. About linear.
SheetReport separateSheets(std::vector<std::uint32_t>& triangles, std::size_t& vertexCount);

} // namespace uvtool
