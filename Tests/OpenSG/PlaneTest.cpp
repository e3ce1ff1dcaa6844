#include "OpenSG/Plane.h"
#include "MathTestTools.h"

using namespace osg;

namespace
{

TEST(Plane, ANormalOfZeroPutsEverythingOnThePlane)
{
    EXPECT_EQ(Plane(Vec3f(), Pnt3f(1, 2, 3)).distance(Pnt3f(100, 0, -7)), 0);
    const Plane shortNormal(Vec3f(9e-7F, 0, 0), Pnt3f(1, 0, 0));
    EXPECT_EQ(shortNormal.getNormal(), Vec3f(9e-7F, 0, 0)) << "kept as it is";
    EXPECT_NEAR(shortNormal.distance(Pnt3f(3, 0, 0)), 1.8e-6, 1e-12);
}

RC_GTEST_PROP(PlaneProperty, DistanceIsTheLengthOfTheWayAlongTheNormal, ())
{
    const Vec3f normal = mathtest::vector(1);
    RC_PRE(normal.length() > 0.01F);
    const Pnt3f origin(mathtest::vector(100));
    const float way = mathtest::number(10);
    const Plane plane(normal, origin);
    const Vec3f across = normal.cross(mathtest::vector(1));
    const Pnt3f p = origin + plane.getNormal() * way + across;
    RC_ASSERT(std::abs(plane.distance(p) - static_cast<double>(way)) < 1e-4);
}

} // namespace
