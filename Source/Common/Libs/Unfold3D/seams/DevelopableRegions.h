#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Parts patches into regions that can nearly be rolled out into the plane: with little curvature
/// inside, by the angles around their vertices. So planes, cylinders, cones and all that is bent
/// from a sheet come out whole, and what is curved both ways is parted into pieces.
///
/// Regions grow from triangles by joining neighbours, over the flattest edges first, so that sharp
/// edges are the last to disappear (in the manner of Garland, Willmott and Heckbert 2001; the
/// measure is intrinsic instead of a fit of planes).
///
/// isWanted  [triangle]  those to be parted; whole patches
/// isSeam    [edge]      gets the borders between the regions; what is a seam stays one
///
/// About n log n. Throws Stopped.
void partIntoDevelopables(const SeamMesh& mesh, std::span<const char> isWanted,
                          std::vector<char>& isSeam, const RunControl& control);

} // namespace unfold3d
