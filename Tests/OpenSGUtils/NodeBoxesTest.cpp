#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"

#include <cmath>

using namespace osg;

namespace
{

/// A quad below a transform that doubles it, turns it by a quarter about z and moves it along x, so
/// that it fills x from 8 to 10 and y from 0 to 2; and a shell above, which has no geometry.
struct BoxedQuad
{
    BoxedQuad()
    {
        const auto transform = Transform3D::create();
        transform->setScale(Vec3f(2, 2, 2));
        transform->setRotationAsQuaternion(Quaternion::fromEulerDegrees(Vec3f(0, 0, 90)));
        transform->setTranslation(Vec3f(10, 0, 0));
        const auto shell = Geometry::create();
        shell->setGeometryType(Geometry::ShellType);
        top->setCore(transform);
        top->addChild(shellNode);
        shellNode->setCore(shell);
        shellNode->addChild(quadNode);
        quadNode->setCore(quad);
    }

    RefPtr<Geometry> quad = tiny::quad();
    RefPtr<Node> top{Node::create()};
    NodePtr shellNode = Node::create();
    NodePtr quadNode = Node::create();
};

TEST(NodeBoxes, AreInTheWorldAndPassOverWhatIsNoPlace)
{
    const BoxedQuad scene;
    const RefPtr<Node> noCore(Node::create());
    scene.quad->getPositions()->addValue(Pnt3f(std::nanf(""), 99, 99));
    scene.quad->getPositions()->addValue(Pnt3f(99, 3e38F, 99)); // is infinite in the world
    Pnt3f min;
    Pnt3f max;
    Vec3f center;
    kyNodeUtils::getBoundingBox({scene.quadNode, NodePtr(), noCore.get(), scene.top.get()}, min,
                                max, center);
    EXPECT_TRUE(mathtest::isNear(min, Pnt3f(8, 0, 0), 1e-5F));
    EXPECT_TRUE(mathtest::isNear(max, Pnt3f(10, 2, 0), 1e-5F));
    EXPECT_TRUE(mathtest::isNear(center, Vec3f(9, 1, 0), 1e-5F));

    Matrix shifted = Matrix::translation(Vec3f(0, 0, 7));
    Vec3f size = kyNodeUtils::getProjectionBoundingBox({scene.quadNode}, shifted, min, max, true);
    EXPECT_TRUE(mathtest::isNear(size, Vec3f(2, 2, 0), 1e-5F));
    EXPECT_TRUE(mathtest::isNear(min, Pnt3f(8, 0, 7), 1e-5F));
    scene.quad->getPositions()->resize(4);
    size = kyNodeUtils::getProjectionBoundingBox({scene.quadNode}, shifted, min, max, false);
    EXPECT_EQ(max, Pnt3f(1, 1, 7)) << "in its own coordinates";
    EXPECT_EQ(size, Vec3f(1, 1, 0));

    EXPECT_EQ(kyNodeUtils::getProjectionBoundingBox({scene.shellNode}, shifted, min, max, true),
              Vec3f());
    EXPECT_EQ(max, Pnt3f(1, 1, 7)) << "left alone";
    kyNodeUtils::getBoundingBox({scene.shellNode}, min, max, center);
    EXPECT_TRUE(min == Pnt3f() && max == Pnt3f() && center == Vec3f());
}

TEST(SubTree, HoldsWhatIsBelowANodeAndNotTheNode)
{
    const BoxedQuad scene;
    std::vector<NodePtr> below;
    kyNodeUtils::getSubTreeNodes(scene.top, below);
    kyNodeUtils::getSubTreeNodes(scene.quadNode, below);
    kyNodeUtils::getSubTreeNodes(NullFC, below);
    EXPECT_EQ(below, (std::vector<NodePtr>{scene.shellNode, scene.quadNode}));
    EXPECT_TRUE(kyNodeUtils::isShellGeometry(scene.shellNode));
    EXPECT_FALSE(kyNodeUtils::isShellGeometry(scene.quadNode));
    EXPECT_FALSE(kyNodeUtils::isShellGeometry(NodePtr()));
}

RC_GTEST_PROP(SphericalAnglesProperty, LeadBackToTheDirection, ())
{
    const Vec3f v = mathtest::vector(3);
    const Vec3f s = kyNodeUtils::cartesianToSpherical(v.x(), v.y(), v.z());
    const float flat = s.z() * std::sin(s.y());
    const Vec3f back(flat * std::cos(s.x()), flat * std::sin(s.x()), s.z() * std::cos(s.y()));
    RC_ASSERT(mathtest::isNear(back, v, 10 * mathtest::Rounding));
    RC_ASSERT(s.y() >= 0);
    RC_ASSERT(kyNodeUtils::cartesianToSpherical(0, 0, -2) == Vec3f(0, 3.1415927F, 2));
    RC_ASSERT(kyNodeUtils::cartesianToSpherical(-0.0F, 0, 0) == Vec3f());
}

} // namespace
