#pragma once

#include "document/Document.h"
#include "scene/SceneGeometry.h"

namespace uvtool
{

/// Gives the surfaces of a scene a normal at each vertex: the mean of those that the file has at
/// its corners, or where it has none the mean of its triangles' by their areas. It points to the
/// outer side of the triangles, whatever the file says. A vertex of triangles without an area has
/// none, which is 0, 0, 0.
///
/// Nothing of it gets into the document.
void addVertexNormals(const Document& document, const SceneGeometry& scene);

} // namespace uvtool
