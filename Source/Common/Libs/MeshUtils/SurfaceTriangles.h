#pragma once

#include "MeshUtils/ClosestOnTriangle.h"
#include "MeshUtils/kyPointOnGeometry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// The positions that a search reads: those of the kind GeoPositions3f. None of a null geometry.
std::span<const osg::Pnt3f> searchedPositions(const osg::GeometryPtr& geometry);

/// The corners of a triangle that a search can find: its vertex ids lie within the positions, and
/// all three corners are finite.
inline std::optional<std::array<osg::Pnt3f, 3>>
usableCorners(std::span<const osg::Pnt3f> positions, std::span<const unsigned int, 3> vertices)
{
    if (std::ranges::max(vertices) >= positions.size())
        return std::nullopt;
    const std::array<osg::Pnt3f, 3> corners = {positions[vertices[0]], positions[vertices[1]],
                                               positions[vertices[2]]};
    return std::ranges::all_of(corners, isFinite) ? std::optional(corners) : std::nullopt;
}

/// The triangles of a geometry as they were when it was read, packed for searching: those that a
/// search can find. Numbers stay those of the geometry.
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
    /// Where the triangle that a point on this geometry names stands among the packed ones; -1 for
    /// a point on another geometry, and for a triangle that isn't there.
    [[nodiscard]] int placeOf(const kyPointOnGeometry& point) const;
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
