#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The corners of a polygon, in their order.
std::vector<std::uint32_t> cornersOfPolygon(const DocumentGeometry& geometry, std::size_t polygon);

/// [3 * n] The triangles of a polygon, which is none before `first`.
std::span<const std::uint32_t> trianglesOfPolygon(const DocumentGeometry& geometry,
                                                  std::size_t polygon, std::size_t first);

/// Builds the polygons of a geometry anew out of the corners that it has, one after the other.
/// Attributes go along with the corners.
class PolygonRebuild
{
public:
    /// The geometry has to outlive it, and is as it was until `store`.
    explicit PolygonRebuild(DocumentGeometry& geometry)
        : geometry_(geometry), newOfOld_(geometry.cornerCount(), absentIndex)
    {}

    /// Adds a polygon that takes the source and the material of an old one.
    ///
    /// corners    of the old one
    /// triangles  [3 * n] of these
    void add(std::size_t oldPolygon, std::span<const std::uint32_t> corners,
             std::span<const std::uint32_t> triangles);

    /// Adds a triangle as a polygon of its own.
    void addTriangle(std::size_t oldPolygon, std::span<const std::uint32_t> triangle)
    {
        add(oldPolygon, triangle, triangle);
    }

    /// Puts what was added in the place of all that was there.
    void store();

private:
    DocumentGeometry& geometry_;
    std::vector<std::uint32_t> newOfOld_;   ///< [old corner] of the last polygon that has it
    std::vector<std::uint32_t> oldCorners_; ///< [new corner]
    std::vector<std::uint32_t> offsets_{0};
    std::vector<std::uint32_t> sources_;
    std::vector<std::int32_t> materials_;
    std::vector<std::uint32_t> triangles_;
    std::vector<std::uint32_t> polygonOfTriangle_;
};

} // namespace uvtool
