#include "OpenSG/TriangleCorners.h"

#include "OpenSG/TriangleIterator.h"

#include <algorithm>
#include <optional>

namespace osg
{

namespace
{

/// How many numbers of the index list are corners of triangles, if all primitives are triangles
/// and have one number a corner: the list can be taken as it is then.
std::optional<std::size_t> plainCornerCount(const Geometry& geometry)
{
    const std::size_t indexCount = geometry.getIndices()->getSize();
    const GeoPTypesPtr types = geometry.getTypes();
    const GeoPLengthsPtr lengths = geometry.getLengths();
    const unsigned primitiveCount = lengths ? lengths->getSize() : 1;
    std::size_t count = lengths ? 0 : indexCount;
    for (unsigned primitive = 0; primitive < primitiveCount; ++primitive) {
        const unsigned length = lengths ? lengths->getValue(primitive) : 0;
        if (length % 3 != 0 || (types && types->getValue(primitive) != GeoPrimitive::Triangles))
            return std::nullopt;
        count += length;
    }
    count = std::min(count, indexCount);
    return geometry.getCornerStride() == 1 ? std::optional(count - count % 3) : std::nullopt;
}

} // namespace

std::vector<unsigned int> triangleCorners(const Geometry& geometry)
{
    std::vector<unsigned int> corners;
    const GeoIndicesPtr indices = geometry.getIndices();
    if (!indices)
        return corners;
    if (const auto count = plainCornerCount(geometry)) {
        corners = indices->getValues();
        corners.resize(*count);
        return corners;
    }
    corners.reserve(indices->getSize() / geometry.getCornerStride());
    const TriangleIterator end = geometry.endTriangles();
    for (TriangleIterator t = geometry.beginTriangles(); t != end; ++t)
        for (const unsigned k : {0U, 1U, 2U})
            corners.push_back(t.getPositionIndex(k));
    return corners;
}

} // namespace osg
