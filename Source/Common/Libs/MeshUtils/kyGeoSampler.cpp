#include "MeshUtils/kyGeoSampler.h"

#include "MeshUtils/SurfaceTriangles.h"
#include "OpenSG/TriangleCorners.h"

#include <algorithm>

namespace
{

/// Whether the box of a triangle is farther away than a squared distance, with room for all
/// rounding. False for corners that are not finite.
bool isBoxBeyond(const osg::Pnt3f& point, const std::array<osg::Pnt3f, 3>& corners,
                 double squareDistance)
{
    double squareOutside = 0;
    double squareExtent = 0;
    for (unsigned int i = 0; i < 3; ++i) {
        const double at = point[i];
        const double lower = std::min({corners[0][i], corners[1][i], corners[2][i]});
        const double upper = std::max({corners[0][i], corners[1][i], corners[2][i]});
        const double outside = std::max({lower - at, at - upper, 0.0});
        squareOutside += outside * outside;
        squareExtent += (upper - lower) * (upper - lower);
    }
    return squareOutside > squareDistance * (1 + 0x1p-13) + 0x1p-44 * squareExtent;
}

/// A search through the triangles where they lie in a geometry.
class PlainSearch
{
public:
    PlainSearch(const osg::Geometry& geometry, std::span<const osg::Pnt3f> positions,
                const osg::Pnt3f& point)
        : positions_(positions), corners_(osg::triangleCorners(geometry)), point_(point),
          search_(point)
    {}

    void run(int startTriangle)
    {
        const std::size_t count = corners_.size() / 3;
        if (static_cast<std::size_t>(startTriangle) < count)
            offer(static_cast<std::size_t>(startTriangle));
        for (std::size_t triangle = 0; triangle < count; ++triangle)
            offer(triangle);
    }
    [[nodiscard]] const ClosestSearch& found() const { return search_; }
    [[nodiscard]] std::span<const unsigned int, 3> verticesOf(std::size_t triangle) const
    {
        return std::span<const unsigned int, 3>(&corners_[3 * triangle], 3);
    }

private:
    void offer(std::size_t triangle)
    {
        const auto corners = usableCorners(positions_, verticesOf(triangle));
        if (corners && !isBoxBeyond(point_, *corners, search_.squareDistance()))
            search_.offer(SortedTriangle(*corners, static_cast<int>(triangle)));
    }

    std::span<const osg::Pnt3f> positions_;
    std::vector<unsigned int> corners_;
    osg::Pnt3f point_;
    ClosestSearch search_;
};

} // namespace

bool kyGeoSampler::getClosestPoint(const osg::GeometryPtr& geometry, const osg::Pnt3f& point,
                                   kyPointOnGeometry& result, int startTriangle)
{
    result = kyPointOnGeometry();
    const std::span<const osg::Pnt3f> positions = searchedPositions(geometry);
    if (positions.empty() || !isFinite(point))
        return false;
    PlainSearch search(*geometry, positions, point);
    search.run(startTriangle);
    const ClosestSearch& found = search.found();
    if (!found.hasFound())
        return false;
    result = pointOn(geometry, found.triangle(),
                     search.verticesOf(static_cast<std::size_t>(found.triangle().number)),
                     found.weights());
    return true;
}
