#include "OpenSG/Matrix.h"
#include "MathTestTools.h"

#include <Eigen/Dense>

#include <limits>

using namespace osg;
using mathtest::isNear;

namespace
{

constexpr double HalfTurn = 3.14159265358979;
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

TEST(Matrix, FactoriesMoveKnownPoints)
{
    const struct
    {
        const char* name;
        Matrix matrix;
        Pnt3f imageOf123;
    } cases[] = {
        {"translation", Matrix::translation(Vec3f(10, 20, 30)), Pnt3f(11, 22, 33)},
        {"scaling", Matrix::scaling(Vec3f(2, -1, 0)), Pnt3f(2, -2, 0)},
        {"quarter turn", Matrix::rotation(Quaternion::fromAxisAngle(Vec3f(0, 0, 1), HalfTurn / 2)),
         Pnt3f(-2, 1, 3)},
        {"last row ignored", Matrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 8}),
         Pnt3f(1, 2, 3)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_TRUE(isNear(c.matrix.transformPoint(Pnt3f(1, 2, 3)), c.imageOf123, 1e-6F));
    }
    EXPECT_EQ(cases[0].matrix.transformVector(Vec3f(1, 1, 1)), Vec3f(1, 1, 1));
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
        {"regular", scaling(2), true},
        {"determinant 8e-30", scaling(2e-10F), true},
        {"determinant 1e-33", scaling(1e-11F), false},
        {"a zero scale", Matrix::scaling(Vec3f(1, 1, 0)), false},
        {"equal rows", Matrix({1, 2, 3, 4, 1, 2, 3, 4, 0, 0, 1, 0, 0, 0, 0, 1}), false},
        {"zero last row", Matrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0}), false},
        {"infinite", scaling(Infinity), false},
        {"not a number", Matrix::scaling(Vec3f(std::nanf(""), 1, 1)), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Matrix inverse = c.matrix;
        EXPECT_EQ(inverse.invert(), c.invertible);
        EXPECT_EQ(inverse, c.matrix.inverted());
        if (c.invertible)
            EXPECT_TRUE(isNear(c.matrix * inverse, Matrix(), 1e-6F));
        else
            EXPECT_EQ(inverse, Matrix());
    }
}

} // namespace
