#pragma once

#include "Unfold3D/linear/VertexGraph.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Where a node of a band stands.
enum class Shore : char
{
    Within,
    Source,
    Sink,
    Both
};

/// The fewest nodes of a band that part its two shores.
///
/// graph  the nodes of the band
/// shore  [node]  which shores the node touches
/// Returns [node] whether it can still be reached from the source (Source), is cut (Both), or lies
/// behind the cut (Sink). Of several cuts it is the nearest to the source. Every node that touches
/// both shores is cut.
///
/// A maximum flow with one unit through each node, by shortest ways (Dinic 1970).
std::vector<Shore> leastCut(const VertexGraph& graph, std::span<const Shore> shore);

} // namespace unfold3d
