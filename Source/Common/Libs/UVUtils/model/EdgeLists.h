#pragma once

#include "UVUtils/model/Edge.h"

#include <cstddef>
#include <span>

/// The pairs of a flat list as edges, in their order; an id left over at the end is passed over.
inline std::vector<Edge> edgesOf(std::span<const unsigned int> pairs)
{
    std::vector<Edge> edges;
    edges.reserve(pairs.size() / 2);
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        edges.emplace_back(pairs[i], pairs[i + 1]);
    return edges;
}

/// Edges as a flat list, the lower id of each first.
inline FlatEdgeList flatListOf(std::span<const Edge> edges)
{
    FlatEdgeList pairs;
    pairs.reserve(2 * edges.size());
    for (const Edge& edge : edges)
        pairs.insert(pairs.end(), {edge.first, edge.second});
    return pairs;
}

/// The count with which a list crosses a signature.
inline unsigned int sizeOf(std::span<const unsigned int> pairs)
{
    return static_cast<unsigned int>(pairs.size());
}

/// The pairs whose edges pass a test, in their order and with their ends in theirs.
template <class IsKept>
FlatEdgeList pairsWhere(std::span<const unsigned int> pairs, const IsKept& isKept)
{
    FlatEdgeList kept;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        if (isKept(Edge(pairs[i], pairs[i + 1])))
            kept.insert(kept.end(), {pairs[i], pairs[i + 1]});
    return kept;
}
