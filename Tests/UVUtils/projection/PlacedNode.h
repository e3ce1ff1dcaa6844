#pragma once

#include "OpenSG/MathTestTools.h"
#include "OpenSG/Transform3D.h"
#include "UVUtils/Meshes.h"

/// A node with a geometry, below a transform that places it in the world.
struct PlacedNode
{
    osg::RefPtr<osg::Node> parent;
    osg::NodePtr node;

    PlacedNode(const osg::GeometryPtr& geometry, const osg::Matrix& toWorld)
        : node(nodeOf(geometry))
    {
        const osg::Transform3DPtr transform = osg::Transform3D::create();
        transform->setMatrix(toWorld);
        parent = nodeOf(transform);
        parent->addChild(node);
    }

    [[nodiscard]] UVs uvs(kyUVTypes::UVSet set) const
    {
        return coreOf(node)->getTexSlot(static_cast<unsigned>(set))->getValues();
    }
};

/// Turned, moved and scaled by up to 4 along each axis, mirrored or not.
inline osg::Matrix randomPlace()
{
    osg::Vec3f factors;
    for (unsigned i = 0; i < 3; ++i)
        factors[i] =
            (*rc::gen::arbitrary<bool>() ? 1.F : -1.F) * (0.25F + std::abs(mathtest::number(4)));
    return osg::Matrix::translation(mathtest::vector(5)) *
           osg::Matrix::rotation(mathtest::rotation()) * osg::Matrix::scaling(factors);
}

/// Points given in the world, in the space below a transform.
inline std::vector<osg::Pnt3f> below(const osg::Matrix& toWorld, std::vector<osg::Pnt3f> points)
{
    const osg::Matrix fromWorld = toWorld.inverted();
    for (osg::Pnt3f& point : points)
        point = fromWorld.transformPoint(point);
    return points;
}
