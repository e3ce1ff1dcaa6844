#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace uvtool
{

/// Is it the surface of something made of planes, cylinders and cones (a hard surface), not that of
/// a body, a scan or a terrain?
///
/// Two shares of the area, each from 0 to 1, are added: that of triangles which are flat with a
/// neighbour while at most one other edge bends, and not sharply, as those of planes and cylinders
/// are; and that around vertices whose angles sum up to 360 degrees although the surface bends
/// there. Real meshes of bodies and of the like come to 0.5 at most, of machines and buildings to
/// 0.75 at least. A mesh scaled, or in finer triangles, comes to the same; noise makes a body of
/// it.
///
/// triangles  [3 * n]   vertices, manifold
/// points     [vertex]
///
/// Linear, but for the grouping of the edges.
bool isHardSurface(std::span<const std::uint32_t> triangles, std::span<const Vec3f> points);

} // namespace uvtool
