#pragma once

#include "document/Document.h"
#include "seams/SeamSet.h"

#include <cstdint>
#include <span>

namespace uvtool
{

/// Moves seams from the inner diagonals of polygons to their sides, so that the polygons stay
/// whole.
///
/// A seam along the diagonal (a, c) of the triangle (a, b, c) goes by way of b instead, where no
/// seam and no border passes b; or, where (a, b) is open already and nothing else ends at a, it
/// shortens to (b, c). In either case one triangle changes from one patch to the next, which
/// alters neither the number of patches nor what shape they have: how many borders, and how many
/// handles. A diagonal that can do neither stays a seam.
///
/// triangles          that the set was made of
/// polygonOfTriangle  [triangle]
/// points             [vertex]  of the two ways round a polygon the shorter one is tried first
///
/// Linear in the triangles.
void moveSeamsOffDiagonals(std::span<const std::uint32_t> triangles,
                           std::span<const std::uint32_t> polygonOfTriangle,
                           std::span<const Vec3f> points, SeamSet& seams);

} // namespace uvtool
