#pragma once

#include "document/Document.h"
#include "layout/UVLayout.h"
#include "mesh/Survey.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// Where a triangle of a layout comes from.
struct TriangleSource
{
    std::uint32_t geometry; ///< of the document
    std::uint32_t triangle; ///< of that geometry
};

/// The layout of some geometries of a document, made of the very values that its slot holds.
struct DocumentLayout
{
    std::vector<Vec2f> uvs;
    std::vector<std::uint32_t> corners;
    std::vector<std::int32_t> islandOfTriangle;
    std::vector<TriangleSource> sourceOfTriangle;

    std::int32_t islandCount = 0; ///< the numbers below it are taken

    operator UVLayout() const { return {uvs, corners, islandOfTriangle}; }

    /// Adds a geometry. Left out are triangles without a UV at every corner, those of closed
    /// islands, which no layout can be flat in, and those that `isLeftOut` names; the islands of
    /// the rest get numbers of their own.
    ///
    /// survey     of that geometry and slot
    /// isLeftOut  [triangleCount of the geometry] or empty
    void add(const DocumentGeometry& geometry, std::uint32_t number, std::size_t slot,
             const Survey& survey, const std::vector<char>& isLeftOut = {});

    /// Adds another layout, its islands under numbers of their own.
    void add(const DocumentLayout& other);
};

/// [3 * triangleCount of the layout] Where the corners of its triangles lie in the scene.
std::vector<Vec3d> scenePositions(const Document& document, const DocumentLayout& layout);

} // namespace uvtool
