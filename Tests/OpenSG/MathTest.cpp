#include "MathTestTools.h"
#include "OpenSG/Plane.h"

#include <Eigen/Dense>

#include <limits>
#include <numbers>

using namespace osg;
using mathtest::isNear;
using mathtest::Rounding;

namespace
{

constexpr double HalfTurn = std::numbers::pi;
constexpr float Infinity = std::numeric_limits<float>::infinity();

Eigen::Matrix4d asEigen(const Matrix& m)
{
    Eigen::Matrix4d result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result(row, column) = m(static_cast<unsigned>(row), static_cast<unsigned>(column));
    return result;
}

Matrix randomMatrix(int range)
{
    std::array<float, 16> rows{};
    for (float& value : rows)
        value = mathtest::number(range);
    return Matrix(rows);
}

TEST(Vector, ProductsAndNormalisation)
{
    EXPECT_EQ(Vec3f(1, 0, 0).cross(Vec3f(0, 1, 0)), Vec3f(0, 0, 1));
    EXPECT_TRUE(isNear(Vec3f(0, -8, 6).normalized(), Vec3f(0, -0.8F, 0.6F), 1e-7F));
    EXPECT_EQ(Vec3f(9e-7F, 0, 0).normalized(), Vec3f(9e-7F, 0, 0)) << "too short to have one";
    static_assert(sizeof(Vec2f) == 8 && sizeof(Pnt3f) == 12, "read as packed floats");
}

TEST(Matrix, MovesPointsAndTurnsVectorsByItsUpperRows)
{
    const Pnt3f p(1, 2, 3);
    const Matrix shift = Matrix::translation(Vec3f(10, 20, 30));
    EXPECT_EQ(shift.transformPoint(p), Pnt3f(11, 22, 33));
    EXPECT_EQ(shift.transformVector(Vec3f(1, 1, 1)), Vec3f(1, 1, 1));
    EXPECT_EQ(Matrix::scaling(Vec3f(2, -1, 0)).transformPoint(p), Pnt3f(2, -2, 0));
    const Matrix lastRow({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 8});
    EXPECT_EQ(lastRow.transformPoint(p), p);
}

RC_GTEST_PROP(MatrixProperty, ProductDeterminantAndInverseAgreeWithAReference, ())
{
    const Matrix a = randomMatrix(3);
    const Matrix b = randomMatrix(3);
    const Eigen::Matrix4d reference = asEigen(a);
    const Eigen::Matrix4d product = reference * asEigen(b);
    RC_ASSERT((asEigen(a * b) - product).cwiseAbs().maxCoeff() < 1e-5 * 36);
    const double determinant = reference.determinant();
    RC_ASSERT(std::abs(a.determinant() - determinant) < 1e-12 * 81 * 24);
    RC_PRE(std::abs(determinant) > 1e-6);

    const Eigen::Matrix4d inverse = reference.inverse();
    const double size = std::max(1.0, inverse.cwiseAbs().maxCoeff());
    RC_ASSERT((asEigen(a.inverted()) - inverse).cwiseAbs().maxCoeff() < 1e-6 * size);
}

TEST(Matrix, SingularMatricesInvertToTheIdentity)
{
    const auto scaling = [](float factor) {
        return Matrix::scaling(Vec3f(factor, factor, factor));
    };
    const struct
    {
        const char* name;
        Matrix matrix;
        bool invertible;
    } cases[] = {
        {"determinant 8e-30", scaling(2e-10F), true},
        {"determinant 1e-33", scaling(1e-11F), false},
        {"equal rows", Matrix({1, 2, 3, 4, 1, 2, 3, 4, 0, 0, 1, 0, 0, 0, 0, 1}), false},
        {"infinite", scaling(Infinity), false},
        {"not a number", scaling(std::nanf("")), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Matrix inverse = c.matrix;
        EXPECT_EQ(inverse.invert(), c.invertible);
        EXPECT_EQ(inverse, c.matrix.inverted());
        EXPECT_TRUE(isNear(c.invertible ? c.matrix * inverse : inverse, Matrix(), 1e-6F));
    }
}

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

TEST(Quaternion, AxesOfAnyLengthButNone)
{
    EXPECT_TRUE(isNear(components(Quaternion::fromAxisAngle(Vec3f(0, 3e30F, 4e30F), HalfTurn)),
                       Vec4f(0, 0.6F, 0.8F, 0), 1e-6F));
    for (const Vec3f& axis :
         {Vec3f(), Vec3f(5e-7F, 0, 0), Vec3f(std::nanf(""), 1, 0), Vec3f(Infinity, 1, 0)})
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
    RC_ASSERT(
        isSameRotation(Quaternion::fromAxes(q.rotate(Vec3f(1, 0, 0)), q.rotate(Vec3f(0, 1, 0)),
                                            q.rotate(Vec3f(0, 0, 1))),
                       q));
}

RC_GTEST_PROP(QuaternionProperty, ProductsComposeAndConjugatesUndo, ())
{
    const Quaternion p = mathtest::rotation();
    const Quaternion q = mathtest::rotation();
    const Vec3f v = mathtest::vector(1);
    RC_ASSERT(isNear((p * q).rotate(v), p.rotate(q.rotate(v)), Rounding));
    RC_ASSERT(isNear((p * q).conjugated().rotate((p * q).rotate(v)), v, Rounding));
    RC_ASSERT(std::abs((p * q).norm() - 1) < Rounding);
}

TEST(Plane, ANormalOfZeroPutsEverythingOnThePlane)
{
    EXPECT_EQ(Plane(Vec3f(), Pnt3f(1, 2, 3)).distance(Pnt3f(100, 0, -7)), 0);
    const Plane shortNormal(Vec3f(9e-7F, 0, 0), Pnt3f(1, 0, 0));
    EXPECT_NEAR(shortNormal.distance(Pnt3f(3, 0, 0)), 1.8e-6, 1e-12) << "kept as it is";
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
