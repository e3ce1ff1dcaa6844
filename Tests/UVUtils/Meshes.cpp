#include "UVUtils/Meshes.h"

osg::GeometryPtr geometryOf(const std::vector<osg::Pnt3f>& positions, const Ids& indices)
{
    const auto geometry = osg::Geometry::create();
    geometry->setPositions(tiny::positions(positions));
    geometry->setIndices(tiny::indices(indices));
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
    return geometryOf(positions, indices);
}

void setPrimitive(const osg::GeometryPtr& geometry, unsigned int type, unsigned int length)
{
    geometry->setTypes(osg::GeoPTypesUI8::create());
    geometry->getTypes()->addValue(type);
    geometry->setLengths(osg::GeoPLengthsUI32::create());
    geometry->getLengths()->addValue(length);
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
