#include "OpenSG/Quaternion.h"
#include "MathTestTools.h"

#include <Eigen/Geometry>

#include <numbers>

using namespace osg;
using mathtest::isNear;
using mathtest::Rounding;

namespace
{

constexpr double HalfTurn = std::numbers::pi;

Vec4f components(const Quaternion& q)
{
    return Vec4f(q.x(), q.y(), q.z(), q.w());
}

/// As rotations: q and -q are the same one.
testing::AssertionResult isSameRotation(const Quaternion& actual, const Quaternion& expected)
{
    const auto a = components(actual);
    const auto e = components(expected);
    return isNear(a.dot(e) < 0 ? -a : a, e, Rounding);
}

TEST(Quaternion, AxisAndAngle)
{
    const float root = std::sqrt(0.5F);
    EXPECT_TRUE(isNear(components(Quaternion::fromAxisAngle(Vec3f(0, 0, 3), HalfTurn / 2)),
                       Vec4f(0, 0, root, root), 1e-7F));
    EXPECT_TRUE(isNear(components(Quaternion::fromAxisAngle(Vec3f(0, 3e30F, 4e30F), HalfTurn)),
                       Vec4f(0, 0.6F, 0.8F, 0), 1e-6F))
        << "the length of the axis says nothing";
    for (const Vec3f& axis : {Vec3f(), Vec3f(5e-7F, 0, 0), Vec3f(std::nanf(""), 1, 0),
                              Vec3f(std::numeric_limits<float>::infinity(), 1, 0)})
        EXPECT_EQ(Quaternion::fromAxisAngle(axis, 1), Quaternion());
}

TEST(Quaternion, DegreesTurnAboutXFirstAndAboutZLast)
{
    const Quaternion q = Quaternion::fromEulerDegrees(Vec3f(90, 0, 90));
    EXPECT_TRUE(isNear(q.rotate(Vec3f(0, 1, 0)), Vec3f(0, 0, 1), Rounding))
        << "y to z, which stays";
    EXPECT_TRUE(isNear(q.rotate(Vec3f(1, 0, 0)), Vec3f(0, 1, 0), Rounding)) << "x stays, then to y";
    EXPECT_TRUE(isSameRotation(Quaternion::fromEulerDegrees(Vec3f(0, -30, 0)),
                               Quaternion::fromAxisAngle(Vec3f(0, 1, 0), -HalfTurn / 6)));
}

RC_GTEST_PROP(QuaternionProperty, RotatesLikeItsMatrixAndLikeAReference, ())
{
    const Vec3f axis = mathtest::vector(1);
    RC_PRE(axis.length() > 0.01F);
    const float angle = mathtest::number(7);
    const Vec3f v = mathtest::vector(1);
    const Quaternion q = Quaternion::fromAxisAngle(axis, static_cast<double>(angle));
    const Eigen::Vector3f reference =
        Eigen::AngleAxisf(angle, Eigen::Vector3f(axis.x(), axis.y(), axis.z()).normalized()) *
        Eigen::Vector3f(v.x(), v.y(), v.z());
    RC_ASSERT(isNear(q.rotate(v), Vec3f(reference.x(), reference.y(), reference.z()), Rounding));
    RC_ASSERT(isNear(Matrix::rotation(q).transformVector(v), q.rotate(v), Rounding));
}

RC_GTEST_PROP(QuaternionProperty, ProductsComposeAndConjugatesUndo, ())
{
    const Quaternion p = mathtest::rotation();
    const Quaternion q = mathtest::rotation();
    const Vec3f v = mathtest::vector(1);
    RC_ASSERT(isNear((p * q).rotate(v), p.rotate(q.rotate(v)), Rounding));
    RC_ASSERT(isNear((p * q).conjugated().rotate((p * q).rotate(v)), v, Rounding));
    RC_ASSERT(std::abs((p * q).norm() - 1) < Rounding);
    RC_ASSERT(isNear(Matrix::rotation(p * q), Matrix::rotation(p) * Matrix::rotation(q), Rounding));
}

RC_GTEST_PROP(QuaternionProperty, IsFoundAgainFromTheAxesThatItMakes, ())
{
    const Quaternion q = mathtest::rotation();
    const Quaternion found = Quaternion::fromAxes(
        q.rotate(Vec3f(1, 0, 0)), q.rotate(Vec3f(0, 1, 0)), q.rotate(Vec3f(0, 0, 1)));
    RC_ASSERT(isSameRotation(found, q));
}

} // namespace
