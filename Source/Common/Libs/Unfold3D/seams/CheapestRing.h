#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The cheapest closed way over edges around a piece of tube.
///
/// costs     [edge]
/// vertices  of the piece, which has the shape of a sleeve
/// from, to  some of them, at its two ends
///
/// Returns its edges, in order; none where the piece can't be walked around. Looks for the ways
/// that cross a line between the ends once (in a covering of the piece that tells how often they
/// did). Throws Stopped.
std::vector<int> cheapestRing(const SeamMesh& mesh, std::span<const PathCost> costs,
                              std::span<const int> vertices, std::span<const int> from,
                              std::span<const int> to, const RunControl& control);

} // namespace unfold3d
