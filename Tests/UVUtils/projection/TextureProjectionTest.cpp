#include "OpenSG/Group.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGUtils/kyNodePermission.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/projection/ProjectionSubjects.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace
{

using osg::Pnt3f;
using osg::Vec3f;
using Nodes = std::vector<osg::NodePtr>;

/// Opens what is protected.
struct Base : kyUVTextureProjection
{
    using kyUVTextureProjection::calculateProjectionBoundingBox;
};

TEST(TextureProjection, AShellStandsForItsSurfacesAndANodeComesOnce)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::RefPtr<osg::Node> group(nodeOf(osg::Group::create()));
    const osg::NodePtr plain = nodeOf(quad());
    group->addChild(plain);
    group->addChild(osg::Node::create());
    EXPECT_THAT(Base::resolveNodes({shell, plain, shell->getChild(1), plain, osg::NullFC}),
                testing::UnorderedElementsAre(plain, shell->getChild(0), shell->getChild(1)));
    EXPECT_EQ(Base::resolveNodes({group, group->getChild(1)}), Nodes());
}

TEST(TextureProjection, BoxesAreMeasuredInTheWorldAndInTheProjection)
{
    // Turns x into y, then moves by 10 in x: the quad 0 to 1 lies on 9 to 10, 0 to 1 in the world.
    const auto transform = osg::Transform3D::create();
    transform->setMatrix(osg::Matrix({0, -1, 0, 10, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    const osg::RefPtr<osg::Node> root(nodeOf(transform));
    root->addChild(nodeOf(
        geometryOf({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(1, 1, 0), Pnt3f(std::nanf(""), 99, 99)},
                   {0, 1, 2})));
    const Nodes nodes{root->getChild(0)};
    Vec3f middle;
    Pnt3f min;
    Pnt3f max;
    Base::calculateBoundingBox(nodes, middle, min, max);
    EXPECT_EQ(middle, Vec3f(9.5F, 0.5F, 0));
    EXPECT_EQ(min, Pnt3f(9, 0, 0));
    EXPECT_EQ(max, Pnt3f(10, 1, 0));

    const osg::Matrix toWorld = osg::Matrix::scaling(Vec3f(2, 4, 1));
    osg::Vec2f size;
    Pnt3f center;
    Base::calculateProjectionBoundingBox(nodes, toWorld, size, center);
    EXPECT_EQ(size, osg::Vec2f(0.5F, 0.25F));
    EXPECT_EQ(center, Pnt3f(9.5F, 0.5F, 0));
    Base::calculateProjectionSize(nodes, toWorld, min, max);
    EXPECT_EQ(min, Pnt3f(4.5F, 0, 0));
    EXPECT_EQ(max, Pnt3f(5, 0.25F, 0));

    Base::calculateProjectionBoundingBox({root}, toWorld, size, center);
    EXPECT_EQ(size, osg::Vec2f(-2e30F, -2e30F));
    EXPECT_EQ(center, Pnt3f());
    Base::calculateProjectionSize({root}, toWorld, min, max);
    EXPECT_EQ(max, Pnt3f(5, 0.25F, 0)) << "left as it was";
}

TEST(TextureProjection, LockedNodesFallOutAndTheOthersKeepTheirOrder)
{
    const osg::RefPtr<osg::Node> a(osg::Node::create());
    const osg::RefPtr<osg::Node> b(osg::Node::create());
    const osg::RefPtr<osg::Node> c(osg::Node::create());
    kyNodePermission::deny(b, 27);
    EXPECT_EQ(projectableNodes({c, b, a}), (Nodes{c, a}));
    EXPECT_EQ(projectableNodes({a, b, c}), (Nodes{a, c}));
}

} // namespace
