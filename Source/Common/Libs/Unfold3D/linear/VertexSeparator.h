#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/Dissector.h"

#include <optional>
#include <vector>

namespace unfold3d
{

/// Parts a large graph in two about equal sides by few nodes: a separator of clusters of its nodes
/// is found first, and then the fewest nodes in it and around it that do the same. Without a value
/// where the graph has no such separator, or none is found. Linear.
std::optional<std::vector<Side>> separate(const VertexGraph& graph, const RunControl& control);

} // namespace unfold3d
