#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/JoinPatches.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// Adds seams until every patch can be laid flat: with the connections of a flat sheet, next to
/// no distortion where the surface can be developed, and without lying over itself.
///
/// A patch that can be opened and laid flat as a whole stays whole. Others are parted into regions
/// that roll out, and these are sewn again as long as the union unfolds well.
///
/// isSeam  [edge]  on entry the seams that have to be; they stay
/// Returns the patches.
std::vector<PatchLayout> makeUnfoldable(const SeamMesh& mesh, std::vector<char>& isSeam,
                                        RunControl& control);

} // namespace unfold3d
