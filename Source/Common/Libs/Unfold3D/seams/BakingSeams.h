#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamMesh.h"
#include "Unfold3D/seams/SeamOptions.h"

#include <vector>

namespace unfold3d
{

/// Seams for baking, as flags [edge]: at edges of the angle and sharper, with patches of fewer
/// triangles than asked for sewn to a neighbour where the union can be laid flat; and within
/// patches that can't be laid flat, as makeUnfoldable() finds them. Throws Stopped.
std::vector<char> bakingSeams(const SeamMesh& mesh, const BakingOptions& options,
                              RunControl& control);

} // namespace unfold3d
