#pragma once

#include "document/Document.h"
#include "document/SlotWriter.h"
#include "mesh/CornerVertices.h"
#include "solver/Part.h"

namespace uvtool
{

/// The UVs of a part as new values of a slot of its geometry. Triangles that the part is without
/// keep what they have, but those with a repeated corner go with their neighbours.
///
/// before  the vertices of the geometry that the part was made of
SlotValues valuesOf(const Part& part, const CornerVertices& before,
                    const DocumentGeometry& geometry);

} // namespace uvtool
