#include "UVUtils/Meshes.h"

#include <utility>

osg::GeometryPtr geometryOf(std::vector<osg::Pnt3f> positions, Ids indices)
{
    const auto positionProperty = osg::GeoPositions3f::create();
    positionProperty->takeValues(std::move(positions));
    const auto indexProperty = osg::GeoIndicesUI32::create();
    indexProperty->takeValues(std::move(indices));

    const auto geometry = osg::Geometry::create();
    geometry->setPositions(positionProperty);
    geometry->setIndices(indexProperty);
    return geometry;
}

osg::GeometryPtr quad()
{
    return quadsApart(1);
}

osg::GeometryPtr quadsApart(unsigned int n)
{
    std::vector<osg::Pnt3f> positions;
    Ids indices;
    for (unsigned int k = 0; k < n; ++k) {
        const auto x = static_cast<float>(2 * k);
        positions.insert(positions.end(), {osg::Pnt3f(x, 0.F, 0.F), osg::Pnt3f(x + 1, 0.F, 0.F),
                                           osg::Pnt3f(x + 1, 1.F, 0.F), osg::Pnt3f(x, 1.F, 0.F)});
        for (const unsigned int corner : {0U, 1U, 2U, 0U, 2U, 3U})
            indices.push_back(4 * k + corner);
    }
    return geometryOf(std::move(positions), std::move(indices));
}

void setPrimitive(const osg::GeometryPtr& geometry, unsigned int type, unsigned int length)
{
    const auto types = osg::GeoPTypesUI8::create();
    types->addValue(type);
    geometry->setTypes(types);
    const auto lengths = osg::GeoPLengthsUI32::create();
    lengths->addValue(length);
    geometry->setLengths(lengths);
}

void setUVs(const osg::GeometryPtr& geometry, unsigned int slot, UVs uvs)
{
    const auto texCoords = osg::GeoTexCoords2f::create();
    texCoords->takeValues(std::move(uvs));
    geometry->setTexSlot(slot, texCoords);
}

osg::NodePtr nodeOf(const osg::NodeCorePtr& core)
{
    const auto node = osg::Node::create();
    node->setCore(core);
    return node;
}

osg::NodePtr shellOf(const std::vector<osg::GeometryPtr>& surfaces)
{
    const auto core = osg::Geometry::create();
    core->setGeometryType(osg::Geometry::ShellType);
    const osg::NodePtr shell = nodeOf(core);
    for (const osg::GeometryPtr& surface : surfaces)
        shell->addChild(nodeOf(surface));
    return shell;
}
