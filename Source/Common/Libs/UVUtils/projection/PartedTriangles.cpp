#include "UVUtils/projection/PartedTriangles.h"

#include "OpenSG/TriangleCorners.h"
#include "OpenSGUtils/kyOptimize.h"
#include "UVUtils/model/UVSlot.h"

#include <numeric>
#include <utility>

namespace
{

/// Each vertex is a corner, and of one triangle.
bool areApart(const std::vector<unsigned int>& corners, unsigned int vertexCount)
{
    if (corners.size() != vertexCount)
        return false;
    std::vector<bool> isNamed(vertexCount);
    for (const unsigned int vertex : corners) {
        if (vertex >= vertexCount || isNamed[vertex])
            return false;
        isNamed[vertex] = true;
    }
    return true;
}

/// One list of triangles with one number for each corner.
bool isTriangleList(const osg::Geometry& geometry, std::size_t cornerCount)
{
    const osg::GeoIndicesPtr indices = geometry.getIndices();
    return geometry.getCornerStride() == 1 && indices && indices->getSize() == cornerCount;
}

} // namespace

PartedTriangles partTriangles(const osg::GeometryPtr& geometry)
{
    std::vector<unsigned int> corners = osg::triangleCorners(*geometry);
    if (areApart(corners, vertexCountOf(geometry)) && isTriangleList(*geometry, corners.size()))
        return {std::move(corners), {}};
    kyOptimize::triangulate(geometry, true);
    geometry->makeSingleIndexed(); // all that follows counts on one number a corner
    std::vector<unsigned int> numbers(corners.size());
    std::iota(numbers.begin(), numbers.end(), 0U); // as triangulate numbers them
    return {std::move(numbers), std::move(corners)};
}

void joinEqualCorners(const osg::GeometryPtr& geometry)
{
    kyOptimize::unifyVertices(geometry, true, true, true, true, true, true, true, true, true, false,
                              true, false);
}
