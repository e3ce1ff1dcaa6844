#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// New UVs of one slot of a geometry.
struct SlotValues
{
    std::vector<Vec2f> values;
    /// [3 * triangleCount] number of the value of each triangle corner; absentIndex for one that
    /// keeps what it has.
    std::vector<std::uint32_t> ofTriangleCorner;
};

/// Puts new UVs into a slot, the only way in which commands change UVs of a document.
///
/// The values that were read stay in front of the slot's list, the new ones follow, so that a
/// writer can tell them apart. A polygon whose triangles disagree about a corner they share is
/// replaced by these triangles; triangles keep their order. Returns the number of polygons
/// replaced.
std::size_t writeSlot(DocumentGeometry& geometry, std::size_t slot, const SlotValues& uvs);

} // namespace uvtool
