#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace uvtool
{

/// Gives corners positions of their own, the only way in which commands change the topology of a
/// document. A corner that is given a number that was read has it already; each number behind these
/// becomes a copy of the position that its corners had. Everything else about a corner stays, and
/// positions of equal value are kept apart from now on. A polygon whose triangles disagree about a
/// corner that they share is replaced by these triangles. Returns the number of polygons replaced.
///
/// positionOfTriangleCorner  [3 * triangleCount] numbers behind those that were read have no gaps,
///                           and corners of one had one position
std::size_t partCorners(DocumentGeometry& geometry,
                        std::span<const std::uint32_t> positionOfTriangleCorner);

/// Gives corners UVs of their own in a slot that no command wrote, as partCorners does with
/// positions: values stay, and those that are equal are kept apart. Without new numbers nothing is
/// changed.
///
/// uvOfTriangleCorner  [3 * triangleCount] as there; absentIndex for corners without a UV
std::size_t partUVs(DocumentGeometry& geometry, std::size_t slot,
                    std::span<const std::uint32_t> uvOfTriangleCorner);

} // namespace uvtool
