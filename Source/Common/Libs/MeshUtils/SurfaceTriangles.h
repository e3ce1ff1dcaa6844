#pragma once

#include "MeshUtils/ClosestOnTriangle.h"
#include "MeshUtils/kyPointOnGeometry.h"

#include <cstddef>
#include <span>
#include <vector>

/// The triangles of a geometry as they were when it was read, packed for searching.
///
/// Only triangles that a search can find are kept: their vertex ids lie within the positions, whose
/// kind is GeoPositions3f, and all three corners are finite. Numbers stay those of the geometry.
class SurfaceTriangles
{
public:
    SurfaceTriangles() = default;
    /// A null geometry has no triangles. Linear.
    explicit SurfaceTriangles(const osg::GeometryPtr& geometry);

    [[nodiscard]] bool isEmpty() const { return packed_.empty(); }
    [[nodiscard]] std::span<const SortedTriangle> packed() const { return packed_; }

    /// Puts the packed triangle order[i] at place i.
    void reorder(std::span<const unsigned int> order);

    /// Offers all triangles.
    void searchAll(ClosestSearch& search) const;
    /// Offers the triangle that a point on this geometry names; a bad one is passed over.
    void offerGuess(const kyPointOnGeometry& guess, ClosestSearch& search) const;
    /// Where on the geometry a triangle's weights are.
    [[nodiscard]] kyPointOnGeometry pointAt(const SortedTriangle& triangle,
                                            const std::array<double, 3>& weights) const;

private:
    osg::GeometryPtr geometry_;
    std::vector<SortedTriangle> packed_;
    std::vector<unsigned int> corners_; ///< three vertex ids for each triangle of the geometry
    std::vector<int> placeOfTriangle_;  ///< -1 for one that was not kept
};

/// A place in the terms of a geometry.
///
/// vertices  the ids of the triangle's corners in their own order
/// weights   of the sorted corners
kyPointOnGeometry pointOn(const osg::GeometryPtr& geometry, const SortedTriangle& triangle,
                          std::span<const unsigned int, 3> vertices,
                          const std::array<double, 3>& weights);
