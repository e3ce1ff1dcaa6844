#include "MeshUtils/SurfaceTriangles.h"

#include "OpenSG/TriangleCorners.h"

#include <utility>

std::span<const osg::Pnt3f> searchedPositions(const osg::GeometryPtr& geometry)
{
    const auto property =
        geometry ? osg::dcast<osg::GeoPositions3f>(geometry->getPositions()) : osg::NullFC;
    return property ? std::span<const osg::Pnt3f>(property->values())
                    : std::span<const osg::Pnt3f>();
}

SurfaceTriangles::SurfaceTriangles(const osg::GeometryPtr& geometry) : geometry_(geometry)
{
    const std::span<const osg::Pnt3f> positions = searchedPositions(geometry);
    if (positions.empty())
        return;
    corners_ = osg::triangleCorners(*geometry);
    placeOfTriangle_.assign(corners_.size() / 3, -1);
    packed_.reserve(placeOfTriangle_.size());
    for (std::size_t t = 0; t < placeOfTriangle_.size(); ++t) {
        const std::span<const unsigned int, 3> vertices(&corners_[3 * t], 3);
        if (const auto corners = usableCorners(positions, vertices)) {
            placeOfTriangle_[t] = static_cast<int>(packed_.size());
            packed_.emplace_back(*corners, static_cast<int>(t));
        }
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

int SurfaceTriangles::placeOf(const kyPointOnGeometry& point) const
{
    const auto number = static_cast<std::size_t>(point.triangle);
    return point.geometry == geometry_ && number < placeOfTriangle_.size()
               ? placeOfTriangle_[number]
               : -1;
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
