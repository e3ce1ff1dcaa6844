#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamMesh.h"
#include "Unfold3D/seams/SeamOptions.h"

#include <vector>

namespace unfold3d
{

/// Few, long, hidden seams for bodies and characters [edge]: they open what is closed, cut handles
/// and join holes, then run to where the surface would be strained most when laid flat, and part
/// what would lie over itself there. Throws Stopped.
///
/// Cost: a few dozen factorisations with one number for a vertex, less for large meshes, and one
/// layout of the whole surface; at the highest amount about twice that.
std::vector<char> organicSeams(const SeamMesh& mesh, const OrganicOptions& options,
                               RunControl& control);

} // namespace unfold3d
