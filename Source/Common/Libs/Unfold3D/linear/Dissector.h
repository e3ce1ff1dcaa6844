#pragma once

#include "Unfold3D/linear/VertexGraph.h"

#include <optional>
#include <span>
#include <vector>

namespace unfold3d
{

/// The part of a node on either side of a separator, or on it.
enum class Side : char
{
    Low,
    High,
    Separator
};

/// The library that dissects graphs. It can't be interrupted: give it small ones. It draws its
/// random numbers from the one generator of the process and seeds it first, so calls of several
/// threads wait for each other, and a call gives the same on every run.
///
/// weights  [node]  how much each node counts in the balance of the two sides
/// Both are without a value when the library fails.

/// Parts a graph in two about equal sides that don't meet but through few nodes.
std::optional<std::vector<Side>> dissectOnce(const VertexGraph& graph,
                                             std::span<const int> weights);
/// The whole order of elimination, oldOfNew.
std::optional<std::vector<int>> dissectToTheEnd(const VertexGraph& graph);

} // namespace unfold3d
