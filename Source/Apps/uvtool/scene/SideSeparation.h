#pragma once

#include "document/Document.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Moves the sides of cuts apart that have one UV in spite of the cut.
///
/// A cut gives each of its sides a UV of its own, a small step towards the triangles there. Where
/// these lie upon one another in the layout, or have no area in it, both sides may step to the same
/// place; a file, in which corners of equal position and UV are one vertex, then holds no cut.
/// Such a side takes another step, along u.
///
/// verticesBefore, verticesAfter  [corner]  the cut has given corners of one vertex before several
/// uvs                            [corner]  equal for corners of one vertex after; changed in place
///
/// Linear, but for the sorting of the vertices after.
void separateSides(std::span<const std::uint32_t> verticesBefore,
                   std::span<const std::uint32_t> verticesAfter, std::vector<Vec2f>& uvs);

} // namespace uvtool
