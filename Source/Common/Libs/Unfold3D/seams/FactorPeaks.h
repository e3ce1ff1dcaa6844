#pragma once

#include "Unfold3D/linear/VertexGraph.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A place that a flattening strains more than all around it.
struct FactorPeak
{
    int vertex = 0;
    double strain = 0.0; ///< there
    double excess = 0.0; ///< energy over that of an isometric layout in its surroundings, summed
                         ///< over their area
};

/// The hills and hollows of the strain of a flattening, most excess first.
///
/// graph   the vertices of the surface
/// strain  [vertex] logarithm of the scale, 0 where the map keeps its size
/// areas   [vertex]
///
/// A hill that rises above the pass to its higher neighbour by less than a quarter of its height
/// belongs to that neighbour. One sort.
std::vector<FactorPeak> factorPeaks(const VertexGraph& graph, std::span<const double> strain,
                                    std::span<const double> areas);

} // namespace unfold3d
