#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// The edges, as flags, at which the normals of the two triangles differ by so many degrees at
/// least. An angle may fall short by what rounding of the positions makes of it. An angle that
/// isn't positive takes all edges that aren't flat, since the inside of a flat face is no edge.
std::vector<char> sharpEdges(const SeamMesh& mesh, double degrees);

} // namespace unfold3d
