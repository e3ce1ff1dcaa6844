#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The connected parts of a triangle list.
struct Islands
{
    std::vector<std::int32_t> ofTriangle; ///< numbered in order of their lowest triangle
    std::vector<char> isClosed;           ///< [island] 1 when none of its edges is a border
    std::size_t borderEdges = 0;          ///< edges with one triangle only, of all islands
    std::size_t sharedEdges = 0; ///< edges that more than a pair of triangles, or two in the
                                 ///< same direction, run along

    std::size_t count() const { return isClosed.size(); }
};

/// Triangles belong to one island when a chain of shared vertices leads from one to the other. A
/// triangle that names a vertex twice joins nothing: it gets the island of its first vertex, or -1
/// when no other triangle has that. About linear.
Islands findIslands(std::span<const std::uint32_t> triangles, std::size_t vertexCount);

} // namespace uvtool
