#pragma once

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// What cutting an edge costs by its shape: its length, less where the surface has an edge, since a
/// seam is expected there, and more on a flat face, where it would be in the way. The inner
/// diagonals of polygons are such.
std::vector<PathCost> shapeCosts(const SeamMesh& mesh); ///< [edge]

} // namespace unfold3d
