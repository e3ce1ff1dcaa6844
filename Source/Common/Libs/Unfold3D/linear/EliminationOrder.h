#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/VertexGraph.h"

#include <vector>

namespace unfold3d
{

/// Orders of elimination that keep the factor of a matrix with this graph sparse. Both give
/// oldOfNew: entry k is the node to be eliminated k-th. Both give the same order on every run.

/// Approximate minimum degree: quick, and best for small graphs.
std::vector<int> minimumDegreeOrder(const VertexGraph& graph);

/// Nested dissection: slower to compute, less work for the factorisation of large graphs. Calls of
/// several threads wait for each other, but for some tens of milliseconds only.
std::vector<int> dissectionOrder(const VertexGraph& graph, const RunControl& control);

} // namespace unfold3d
