#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Lays the borders between patches by cheaper ways near by, longer stretches first and then
/// shorter ones: regions that grew triangle by triangle meet in teeth where either would do. The
/// patches keep their neighbours and next to all of their triangles, and no vertex around which
/// much of a full turn is missing comes to lie inside.
///
/// mayMove  [edge]  the seams that may be laid elsewhere; between two patches only
/// costs    [edge]
/// isSeam   [edge]
///
/// Costs some passes over the mesh and over the surroundings of the borders. Throws Stopped.
void straightenBorders(const SeamMesh& mesh, std::span<const char> mayMove,
                       std::span<const PathCost> costs, std::vector<char>& isSeam,
                       const RunControl& control);

} // namespace unfold3d
