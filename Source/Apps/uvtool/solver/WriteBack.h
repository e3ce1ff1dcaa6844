#pragma once

#include "document/Document.h"
#include "solver/Part.h"

#include <cstddef>

namespace uvtool
{

/// Puts the UVs of a part into the slot of its geometry; the number of polygons that had to be
/// split for it. Triangles that the part is without keep what they have, but those with a repeated
/// corner go with their neighbours.
std::size_t writeUVs(const Part& part, std::size_t slot, DocumentGeometry& geometry);

} // namespace uvtool
