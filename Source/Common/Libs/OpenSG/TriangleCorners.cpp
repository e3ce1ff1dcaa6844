#include "OpenSG/TriangleCorners.h"

#include "OpenSG/TriangleIterator.h"

namespace osg
{

std::vector<unsigned int> triangleCorners(const Geometry& geometry)
{
    std::vector<unsigned int> corners;
    const GeoIndicesPtr indices = geometry.getIndices();
    corners.reserve(indices ? indices->getSize() / geometry.getCornerStride() : 0);
    for (auto t = geometry.beginTriangles(); t != geometry.endTriangles(); ++t)
        corners.insert(corners.end(),
                       {t.getPositionIndex(0), t.getPositionIndex(1), t.getPositionIndex(2)});
    return corners;
}

} // namespace osg
