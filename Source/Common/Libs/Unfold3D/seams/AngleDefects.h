#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// [vertex] what is missing from a full turn around an inner vertex, in radians: the curvature that
/// a patch with this vertex in its inside has to take up. 0 where the surface can be rolled out and
/// on the border.
std::vector<double> angleDefects(const SeamMesh& mesh);

} // namespace unfold3d
