#pragma once

#include <compare>
#include <cstdint>
#include <vector>

/// An undirected pair of vertex ids, the lower one first.
///
/// Made from (7, 3) or from (3, 7) it is the same edge. A pair of one id twice is not refused.
struct Edge
{
    unsigned int first = 0;  ///< the lower id
    unsigned int second = 0; ///< the higher id

    Edge() = default;
    Edge(unsigned int a, unsigned int b) : first(a < b ? a : b), second(a < b ? b : a) {}

    friend auto operator<=>(const Edge&, const Edge&) = default;
};

/// Edges as they cross every signature: two vertex ids an edge, one edge after the other. Unlike an
/// Edge a pair keeps the order in which it was written. An odd count is no list of edges.
using FlatEdgeList = std::vector<unsigned int>;

/// The lower id in the upper half of 64 bits, the higher id in the lower half: distinct for
/// distinct edges.
struct EdgeHash
{
    std::uint64_t operator()(const Edge& edge) const
    {
        return (std::uint64_t{edge.first} << 32U) | edge.second;
    }
};
