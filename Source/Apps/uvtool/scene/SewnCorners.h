#pragma once

#include "document/Document.h"
#include "scene/SceneGeometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Has the corners at sewn edges written anew, also those whose values a sewing left alone.
///
/// Charts that touch in a point may name two UVs of equal value there. Where an edge that ends in
/// it is sewn, only the UVs of its other end change, and the numbers would still tell the sides
/// apart. UVs that are written anew are one where they are equal.
///
/// sides   of the sewn edges, at least one for each; 3 * t + k as in EdgeGroups
/// after   [3 * triangleCount] UVs of the scene's corners
/// before  [3 * triangleCount] gets a value that none of `after` is equal to, at each corner that
///         has the position and the UV of an end of a sewn edge
///
/// About linear in triangles, times the logarithm of the number of sides.
void renewSewnCorners(const Document& document, const SceneGeometry& scene,
                      std::span<const std::uint32_t> sides, std::span<const Vec2f> after,
                      std::span<Vec2f> before);

} // namespace uvtool
