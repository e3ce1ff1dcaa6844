#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Cuts a patch across its middle: between the triangles that are nearer to one of its ends, on
/// ways inside of it, and those that are nearer to the other.
///
/// patch   its triangles, whole under crossing edges that are no seams and in one part
/// isSeam  [edge]  gets the cut
///
/// Does nothing to a single triangle. n log n.
void halvePatch(const SeamMesh& mesh, std::span<const int> patch, std::vector<char>& isSeam);

} // namespace unfold3d
