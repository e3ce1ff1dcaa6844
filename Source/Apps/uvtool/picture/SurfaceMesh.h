#pragma once

#include "document/Document.h"
#include "layout/DocumentLayout.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Triangles in the scene as the picture of a surface sees them, with the layout that they have.
struct SurfaceMesh
{
    std::vector<Vec3d> points;            ///< distinct ones, in the scene
    std::vector<std::uint32_t> triangles; ///< [3 * triangleCount] points
    std::vector<Vec2f> uvs;               ///< [3 * triangleCount] zeros without an island
    std::vector<std::int32_t> island;     ///< [triangleCount] -1 for triangles without a layout
    std::vector<TriangleSource> source;   ///< [triangleCount]

    std::size_t triangleCount() const { return island.size(); }
    const Vec3d& corner(std::size_t triangle, std::size_t k) const
    {
        return points[triangles[3 * triangle + k]];
    }
};

/// All triangles of some geometries of a document; those that the layout has get its UVs.
SurfaceMesh surfaceOf(const Document& document, std::span<const std::size_t> geometries,
                      const DocumentLayout& layout);

/// The edges at which the layout is cut, as pairs of points, flat: those at which the UVs of two
/// triangles differ, and those that belong to one triangle, or to more than two.
std::vector<std::uint32_t> seamsOf(const SurfaceMesh& mesh);

} // namespace uvtool
