#pragma once

#include "document/Document.h"
#include "scene/SceneEdges.h"

#include <cstddef>
#include <vector>

namespace uvtool
{

/// The edges of a scene at which the surface bends by more than so many degrees: the angle between
/// the normals of the two triangles there, 0 where they lie in one plane.
///
/// Angles are those of the positions in the file, seen in the scene. A triangle on either side may
/// wind as it likes. An edge of more than two triangles always counts: no two of them go on in each
/// other. Left out are
///   - borders, which have one triangle only;
///   - edges at a triangle so thin that it has no normal;
///   - the inner edges of a polygon, which stay even where it isn't flat.
/// Angles that exceed the limit by less than a thousandth of a degree are taken for the limit, as
/// coordinates are rounded. Linear; ascending.
std::vector<std::size_t> sharpEdges(const Document& document, const SceneGeometry& scene,
                                    const SceneEdges& edges, double degrees);

} // namespace uvtool
