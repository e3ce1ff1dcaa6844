#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace uvtool
{

/// What a file is made of.
enum FaceKind : std::int32_t
{
    PolygonFaces,
    TriangleFaces
};

struct RemovedTriangles
{
    std::size_t triangles = 0;
    std::size_t polygons = 0;      ///< none of whose triangles are left
    std::size_t splitPolygons = 0; ///< of which only triangles could be kept

    RemovedTriangles& operator+=(const RemovedTriangles& other);
};

/// Takes out of the polygons of four corners and more those that are repeated: one in the place of
/// the one before it, and the tip of a spike, whose neighbours lie in one place. What is left is
/// cut into triangles anew; polygons of less than three corners go. Returns what there is less.
RemovedTriangles removeRepeatedCorners(DocumentGeometry& geometry);

/// Takes triangles without an area out of a geometry. A polygon of no other triangles goes.
///
/// For PolygonFaces such triangles stay in a polygon that has others as well, for a corner on a
/// straight side is one of the polygon beyond, too. But one that comes by a place twice gives way
/// to the others. For TriangleFaces they all go.
///
/// isRemoved  [triangleCount]
RemovedTriangles removeTriangles(DocumentGeometry& geometry, std::span<const char> isRemoved,
                                 FaceKind kind);

} // namespace uvtool
