#pragma once

#include "document/Document.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Fills triangles and polygonOfTriangle of a geometry from its polygons.
///
/// A polygon is cut as a fan from its first corner, as most programs do, so that they see the very
/// triangles that the tool worked on; where that fan would fold over (a polygon that isn't convex,
/// or has corners on one line) ears are clipped instead. A polygon of n corners always gives n - 2
/// triangles. Linear, but for polygons that need clipping (square in their corners).
void triangulatePolygons(DocumentGeometry& geometry);

/// The same for a single polygon: [3 * (n - 2)] numbers of its corners; none for less than three.
std::vector<std::uint32_t> trianglesOfPolygon(std::span<const Vec3d> corners);

} // namespace uvtool
