#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"

#include <cmath>

using namespace osg;

namespace
{

TEST(NodeBoxes, AreInTheWorldAndPassOverWhatIsNoPlace)
{
    // Doubles the quad, turns it by a quarter about z and moves it along x.
    const auto transform = Transform3D::create();
    transform->setMatrix(Matrix({0, -2, 0, 10, 2, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1}));
    const RefPtr<Node> top(Node::create());
    top->setCore(transform);
    const NodePtr node = Node::create();
    top->addChild(node);
    const RefPtr<Geometry> quad = tiny::quad();
    node->setCore(quad);
    const RefPtr<Node> noCore(Node::create());

    for (const Pnt3f& infiniteInTheWorld : {Pnt3f(3e38F, 99, 99), Pnt3f(99, 3e38F, 99)})
        quad->getPositions()->addValue(infiniteInTheWorld);
    Pnt3f min;
    Pnt3f max;
    Vec3f center;
    kyNodeUtils::getBoundingBox({node, NodePtr(), noCore.get(), top.get()}, min, max, center);
    EXPECT_TRUE(min == Pnt3f(8, 0, 0) && max == Pnt3f(10, 2, 0) && center == Vec3f(9, 1, 0));

    const Matrix shift = Matrix::translation(Vec3f(0, 0, 7));
    Vec3f size = kyNodeUtils::getProjectionBoundingBox({node}, shift, min, max, true);
    EXPECT_TRUE(min == Pnt3f(8, 0, 7) && max == Pnt3f(10, 2, 7) && size == Vec3f(2, 2, 0));
    quad->getPositions()->resize(4);
    size = kyNodeUtils::getProjectionBoundingBox({node}, shift, min, max, false);
    EXPECT_TRUE(max == Pnt3f(1, 1, 7) && size == Vec3f(1, 1, 0)) << "in its own coordinates";

    size = kyNodeUtils::getProjectionBoundingBox({top.get()}, shift, min, max, true);
    EXPECT_TRUE(max == Pnt3f(1, 1, 7) && size == Vec3f()) << "left alone";
    kyNodeUtils::getBoundingBox({top.get()}, min, max, center);
    EXPECT_TRUE(min == Pnt3f() && max == Pnt3f() && center == Vec3f());
}

RC_GTEST_PROP(SphericalAnglesProperty, LeadBackToTheDirection, ())
{
    const Vec3f v = mathtest::vector(3);
    const Vec3f s = kyNodeUtils::cartesianToSpherical(v.x(), v.y(), v.z());
    const float flat = s.z() * std::sin(s.y());
    const Vec3f back(flat * std::cos(s.x()), flat * std::sin(s.x()), s.z() * std::cos(s.y()));
    RC_ASSERT(mathtest::isNear(back, v, 10 * mathtest::Rounding));
    RC_ASSERT(kyNodeUtils::cartesianToSpherical(0, 0, -2) == Vec3f(0, 3.1415927F, 2));
    RC_ASSERT(kyNodeUtils::cartesianToSpherical(-0.0F, 0, 0) == Vec3f());
}

} // namespace
