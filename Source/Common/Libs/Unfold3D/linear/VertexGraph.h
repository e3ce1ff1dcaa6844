#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <array>
#include <span>
#include <vector>

namespace unfold3d
{

/// Which nodes of a symmetric sparse matrix meet, as packed lists.
///
///   offsets     [node + 1]  where the list of a node begins
///   neighbours  [entry]     the other nodes of its row, ascending, without the node itself; every
///                           pair stands in both lists
struct VertexGraph
{
    std::vector<int> offsets{0};
    std::vector<int> neighbours;

    int size() const { return static_cast<int>(offsets.size()) - 1; }
    std::span<const int> of(int node) const
    {
        const auto begin = static_cast<std::size_t>(offsets[static_cast<std::size_t>(node)]);
        const auto end = static_cast<std::size_t>(offsets[static_cast<std::size_t>(node) + 1]);
        return std::span(neighbours).subspan(begin, end - begin);
    }
};

/// Two nodes that meet, in any order.
using NodePair = std::array<int, 2>;

/// The graph of the vertices of a mesh: two meet when an edge of a triangle joins them, or a pair.
/// Any list of triangles will do, non-manifold ones too; nodes beyond the vertices may stand in the
/// pairs. Linear.
VertexGraph vertexGraph(std::span<const Triangle> triangles, int nodeCount,
                        std::span<const NodePair> pairs = {});

/// The graph of any list of node pairs, doubles and pairs of a node with itself allowed.
VertexGraph graphOfPairs(std::span<const NodePair> pairs, int nodeCount);

/// The same graph under other names: node v becomes newOfOld[v], a permutation.
VertexGraph renumbered(const VertexGraph& graph, std::span<const int> newOfOld);

} // namespace unfold3d
