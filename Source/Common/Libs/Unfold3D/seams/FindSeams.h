#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/mesh/ImportedMesh.h"
#include "Unfold3D/seams/SeamOptions.h"

#include <array>
#include <vector>

namespace unfold3d
{

/// Proposes where to cut a mesh so that each patch can be laid flat: it is open, has no handle, and
/// its border is one loop, but for holes where it lies flat.
///
/// Returns pairs of a triangle of the import and one of its corners, from which the edge runs to
/// the next; each edge once. Edges on the border or with more than two triangles part patches
/// anyway and are not told. Bad triangles are passed over. Values of the options beyond their
/// limits are taken as the limits.
///
/// The same seams for any size of the mesh, and on every run. Throws Stopped.
std::vector<std::array<int, 2>> findSeams(const ImportedMesh& mesh, const SeamOptions& options,
                                          RunControl& control);

} // namespace unfold3d
