#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// A partition of the triangle corners of a geometry into vertices, numbered in order of first use
/// unless said otherwise.
struct CornerVertices
{
    std::vector<std::uint32_t> vertexOfCorner; ///< [3 * triangleCount]
    std::size_t vertexCount = 0;
};

/// The vertices of a geometry as the tool shows it, whose numbers are the ids of the command line:
/// corners are one vertex where position, normal, colour and the UVs of all slots are equal, and,
/// where positions are kept apart, their numbers.
CornerVertices distinctCorners(const DocumentGeometry& geometry);

/// The vertices that the solver works on: corners are one vertex where position and UV in the slot
/// are equal, whatever else they have. Corners without a UV there go by position; in a geometry
/// that has none at all and was cut open, by the numbers of positions.
CornerVertices cornersByUV(const DocumentGeometry& geometry, std::size_t slot);

/// Does the geometry list positions several times to mark seams?
///
/// Most files that do so have other reasons: a vertex has a single normal there, or each triangle
/// has positions of its own. False for these, that is where positions of equal value always differ
/// in another attribute, and where more than half of the triangles share no position.
bool isCutOpen(const DocumentGeometry& geometry);

/// Corners are one vertex where they name the same position, whose number is that of the vertex.
CornerVertices cornersByPositionNumber(const DocumentGeometry& geometry);

/// Corners are one vertex where they name the same position and the same UV in the slot, or both
/// none there. Without UVs in the slot as cornersByPositionNumber.
CornerVertices cornersByUVNumber(const DocumentGeometry& geometry, std::size_t slot);

/// Corners are one vertex where positions are equal.
CornerVertices cornersByPosition(const DocumentGeometry& geometry);

/// The vertices of a geometry as if it had no UVs: by position, in one that was cut open by the
/// numbers of positions.
CornerVertices cornersOfSurface(const DocumentGeometry& geometry);

} // namespace uvtool
