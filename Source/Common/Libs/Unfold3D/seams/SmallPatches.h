#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/PatchLayout.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// Which patches are too small to stand alone.
struct SmallPatchRules
{
    double minArea = 0.0; ///< in the scale of the mesh
    int minTriangles = 0;
};

/// Sews small patches to the neighbours with which they share most of their border, over sharp
/// edges too, where the union can still be laid flat. Patches of next to nothing are always small:
/// some ten-thousandths of the area of the mesh or of a surface that hangs together, and a few
/// triangles of some thousandths.
///
/// patches  all of them, as makeUnfoldable() returns them; those that are joined to others become
///          empty
/// isSeam   [edge]  loses what is sewn
void joinSmallPatches(const SeamMesh& mesh, const SmallPatchRules& rules,
                      std::vector<PatchLayout>& patches, std::vector<char>& isSeam,
                      RunControl& control);

} // namespace unfold3d
