#pragma once

#include "document/Document.h"
#include "scene/SceneGeometry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The UVs of the triangle corners of a scene, [3 * triangleCount], as the library sees them in its
/// compact mesh: vertices that are one there have one value.
std::vector<Vec2f> compactCornerUVs(const SceneGeometry& scene, std::size_t slot);

/// The same as they stand in the surfaces, also after an operation has given these other vertices
/// and indices.
std::vector<Vec2f> surfaceCornerUVs(const SceneGeometry& scene, std::size_t slot);

/// [3 * triangleCount] The vertices of the compact mesh at the triangle corners, as an operation on
/// the scene has left them.
std::vector<std::uint32_t> compactCorners(const SceneGeometry& scene, std::size_t slot);

/// [3 * triangleCount] The UVs of a geometry as they stand in the document; NaN at corners without
/// one, which equals nothing.
std::vector<Vec2f> documentCornerUVs(const DocumentGeometry& geometry, std::size_t slot);

/// Puts the UVs of the corners for which `after` differs from `before` into a geometry, and
/// nothing else: other corners keep what was read.
///
/// before, after  [3 * triangleCount]
/// vRunsDownward  of the file to be written, see FormatTraits
///
/// Returns the number of polygons that are now written as their triangles. A CommandError of status
/// Unsound where a value isn't finite.
std::size_t writeCornerUVs(DocumentGeometry& geometry, std::size_t slot,
                           std::span<const Vec2f> before, std::span<const Vec2f> after,
                           bool vRunsDownward);

/// The same for the surfaces of a scene, one after the other.
std::size_t writeCornerUVs(Document& document, const SceneGeometry& scene, std::size_t slot,
                           std::span<const Vec2f> before, std::span<const Vec2f> after,
                           bool vRunsDownward);

} // namespace uvtool
