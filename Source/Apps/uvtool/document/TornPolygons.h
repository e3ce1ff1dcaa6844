#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace uvtool
{

/// Replaces each polygon whose triangles give a corner that they share different values by these
/// triangles. Triangles keep their order. Returns the number of polygons replaced.
///
/// valueOfTriangleCorner  [3 * triangleCount] numbers of any kind
std::size_t splitTornPolygons(DocumentGeometry& geometry,
                              std::span<const std::uint32_t> valueOfTriangleCorner);

} // namespace uvtool
