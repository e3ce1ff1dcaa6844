#include "MeshUtils/SurfaceTriangles.h"

#include "OpenSG/TriangleCorners.h"

#include <algorithm>
#include <utility>

SurfaceTriangles::SurfaceTriangles(const osg::GeometryPtr& geometry) : geometry_(geometry)
{
    const auto property =
        geometry ? osg::dcast<osg::GeoPositions3f>(geometry->getPositions()) : osg::NullFC;
    if (!property)
        return;
    const std::span<const osg::Pnt3f> positions = property->values();
    corners_ = osg::triangleCorners(*geometry);
    placeOfTriangle_.assign(corners_.size() / 3, -1);
    packed_.reserve(placeOfTriangle_.size());
    for (std::size_t t = 0; t < placeOfTriangle_.size(); ++t) {
        const std::span<const unsigned int, 3> ids(&corners_[3 * t], 3);
        if (std::ranges::max(ids) >= positions.size())
            continue;
        const std::array<osg::Pnt3f, 3> corners = {positions[ids[0]], positions[ids[1]],
                                                   positions[ids[2]]};
        if (!std::ranges::all_of(corners, isFinite))
            continue;
        placeOfTriangle_[t] = static_cast<int>(packed_.size());
        packed_.emplace_back(corners, static_cast<int>(t));
    }
}

void SurfaceTriangles::reorder(std::span<const unsigned int> order)
{
    std::vector<SortedTriangle> reordered;
    reordered.reserve(order.size());
    for (const unsigned int place : order) {
        const SortedTriangle& triangle = packed_[place];
        placeOfTriangle_[static_cast<std::size_t>(triangle.number)] =
            static_cast<int>(reordered.size());
        reordered.push_back(triangle);
    }
    packed_ = std::move(reordered);
}

void SurfaceTriangles::searchAll(ClosestSearch& search) const
{
    for (const SortedTriangle& triangle : packed_)
        search.offer(triangle);
}

void SurfaceTriangles::offerGuess(const kyPointOnGeometry& guess, ClosestSearch& search) const
{
    const auto number = static_cast<std::size_t>(guess.triangle);
    if (guess.geometry != geometry_ || number >= placeOfTriangle_.size())
        return;
    if (const int place = placeOfTriangle_[number]; place >= 0)
        search.offer(packed_[static_cast<std::size_t>(place)]);
}

kyPointOnGeometry SurfaceTriangles::pointAt(const SortedTriangle& triangle,
                                            const std::array<double, 3>& weights) const
{
    const auto first = 3 * static_cast<std::size_t>(triangle.number);
    return pointOn(geometry_, triangle, std::span<const unsigned int, 3>(&corners_[first], 3),
                   weights);
}

kyPointOnGeometry pointOn(const osg::GeometryPtr& geometry, const SortedTriangle& triangle,
                          std::span<const unsigned int, 3> vertices,
                          const std::array<double, 3>& weights)
{
    kyPointOnGeometry point;
    point.geometry = geometry;
    point.triangle = triangle.number;
    for (unsigned int k = 0; k < 3; ++k) {
        point.vertices[k] = vertices[k];
        point.weights[triangle.cornerOf[k]] = static_cast<float>(weights[k]);
    }
    return point;
}
