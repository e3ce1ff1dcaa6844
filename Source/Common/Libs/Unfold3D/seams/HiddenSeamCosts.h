#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// What it costs to lay a seam along each edge of a body [edge]: its length, times a factor from
/// a twentieth to somewhat more than one. Cheap is where few look (seams/Visibility.h), along
/// creases, the more so in a valley, and in a plane of symmetry; dear are edges in the open, and
/// edges across flat places, which most often are the inner diagonals of polygons. Throws Stopped.
std::vector<double> hiddenSeamCosts(const SeamMesh& mesh, std::span<const int> samples,
                                    const RunControl& control);

} // namespace unfold3d
