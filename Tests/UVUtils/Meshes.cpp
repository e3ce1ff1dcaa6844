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

osg::GeometryPtr brokenQuad()
{
    const osg::GeometryPtr geometry = quad();
    geometry->getIndices()->setValue(4, 0);
    return geometry;
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

void setPrimitives(osg::Geometry& geometry, const Ids& types, const Ids& lengths)
{
    geometry.setTypes(types.empty() ? osg::GeoPTypesPtr() : osg::GeoPTypesUI8::create());
    geometry.setLengths(lengths.empty() ? osg::GeoPLengthsPtr() : osg::GeoPLengthsUI32::create());
    for (const unsigned int type : types)
        geometry.getTypes()->addValue(type);
    for (const unsigned int length : lengths)
        geometry.getLengths()->addValue(length);
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

osg::NodePtr twoSurfaceShell()
{
    const osg::GeometryPtr right = quad();
    const auto positions = right->getPositions();
    for (unsigned int i = 0; i < 4; ++i)
        positions->setValue(positions->getValue(i) + osg::Vec3f(1, 0, 0), i);
    return shellOf({quad(), right});
}

osg::GeometryPtr coreOf(const osg::NodePtr& node)
{
    return osg::dcast<osg::Geometry>(node->getCore());
}

osg::GeometryPtr surfaceOf(const osg::NodePtr& shell, unsigned int child)
{
    return coreOf(shell->getChild(child));
}

std::vector<osg::GeometryPtr> geometriesOf(const osg::NodePtr& node)
{
    std::vector<osg::GeometryPtr> geometries{coreOf(node)};
    for (unsigned int i = 0; i < node->getNChildren(); ++i)
        if (surfaceOf(node, i))
            geometries.push_back(surfaceOf(node, i));
    return geometries;
}

Ids trianglesOf(const osg::NodePtr& node)
{
    Ids triangles;
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (const unsigned int id : surface.geometry->getIndices()->getValues())
            triangles.push_back(surface.firstId + id);
    return triangles;
}
