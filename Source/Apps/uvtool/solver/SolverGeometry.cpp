#include "solver/SolverGeometry.h"

#include <vector>

namespace uvtool
{
namespace
{

osg::GeoPositions3fPtr positionsOf(std::span<const Vec3f> positions)
{
    std::vector<osg::Pnt3f> values;
    values.reserve(positions.size());
    for (const Vec3f& p : positions)
        values.emplace_back(p[0], p[1], p[2]);
    const auto property = osg::GeoPositions3f::create();
    property->takeValues(std::move(values));
    return property;
}

osg::GeoTexCoords2fPtr texCoordsOf(std::span<const Vec2f> uvs)
{
    std::vector<osg::Vec2f> values;
    values.reserve(uvs.size());
    for (const Vec2f& uv : uvs)
        values.emplace_back(uv[0], uv[1]);
    const auto property = osg::GeoTexCoords2f::create();
    property->takeValues(std::move(values));
    return property;
}

} // namespace

osg::RefPtr<osg::Geometry> makeGeometry(const TriangleArrays& arrays, std::size_t slot)
{
    osg::RefPtr<osg::Geometry> geometry(osg::Geometry::create());
    geometry->setPositions(positionsOf(arrays.positions));
    const auto indices = osg::GeoIndicesUI32::create();
    indices->takeValues({arrays.triangles.begin(), arrays.triangles.end()});
    geometry->setIndices(indices);
    const auto types = osg::GeoPTypesUI8::create();
    types->addValue(osg::GeoPrimitive::Triangles);
    geometry->setTypes(types);
    const auto lengths = osg::GeoPLengthsUI32::create();
    lengths->addValue(static_cast<unsigned int>(arrays.triangles.size()));
    geometry->setLengths(lengths);
    if (!arrays.uvs.empty())
        geometry->setTexSlot(static_cast<unsigned int>(slot), texCoordsOf(arrays.uvs));
    return geometry;
}

} // namespace uvtool
