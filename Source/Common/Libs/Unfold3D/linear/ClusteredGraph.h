#pragma once

#include "Unfold3D/linear/VertexGraph.h"

#include <vector>

namespace unfold3d
{

/// A graph whose nodes are clusters of the nodes of a larger one.
///
///   graph      which clusters have nodes that meet
///   weight     [cluster]       how many nodes it has
///   ofNode     [node of the larger graph]
struct ClusteredGraph
{
    VertexGraph graph;
    std::vector<int> weight;
    std::vector<int> ofNode;
};

/// Each node as a cluster of its own.
ClusteredGraph clustersOfOne(const VertexGraph& graph);

/// Joins each cluster, in turn, that isn't joined yet with all such neighbours: of a mesh, a fourth
/// or a fifth of the clusters remains. Linear.
ClusteredGraph joined(const ClusteredGraph& clusters);

} // namespace unfold3d
