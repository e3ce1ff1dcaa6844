#include "MathTestTools.h"
#include "OpenSG/Group.h"
#include "OpenSG/MatrixDecomposition.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/Transform3D.h"
#include "TinyGeometry.h"

using namespace osg;
using mathtest::isNear;
using mathtest::Rounding;

namespace
{

RefPtr<Transform3D> transform()
{
    return RefPtr<Transform3D>(Transform3D::create());
}

Matrix composed(const TransformParts& parts)
{
    return Matrix::translation(parts.translation) * Matrix::rotation(parts.rotation) *
           Matrix::scaling(parts.scale);
}

RC_GTEST_PROP(Transform3DProperty, TheMatrixIsTheProductInTheStatedOrder, ())
{
    const Vec3f t = mathtest::vector(2);
    const Vec3f rp = mathtest::vector(2);
    const Vec3f sp = mathtest::vector(2);
    const Vec3f s = mathtest::vector(2);
    const Quaternion q = mathtest::rotation();
    const auto core = transform();
    core->setTranslation(t);
    core->setRotatePivot(Pnt3f(rp));
    core->setScalePivot(Pnt3f(sp));
    core->setScale(s);
    core->setRotationAsQuaternion(q);
    const Matrix expected = Matrix::translation(t) * Matrix::translation(rp) * Matrix::rotation(q) *
                            Matrix::translation(-rp) * Matrix::translation(sp) *
                            Matrix::scaling(s) * Matrix::translation(-sp);
    RC_ASSERT(isNear(core->getMatrix(), expected, 20 * Rounding));
}

TEST(Transform3D, AMatrixThatIsSetComesBackExactly)
{
    const Matrix sheared({1, 0.1F, 0, 5, 0, 1, 0.2F, 6, 0, 0, -1, 7, 0.5F, 0, 0, 2});
    const auto core = transform();
    core->setRotatePivot(Pnt3f(1, 1, 1));
    core->setMatrix(sheared);
    EXPECT_EQ(core->getMatrix(), sheared);
    EXPECT_EQ(core->getRotatePivot(), Pnt3f());
    EXPECT_EQ(core->getTranslation(), Vec3f(5, 6, 7));
    const RefPtr<Transform3D> copy(core->clone());
    EXPECT_EQ(copy->getMatrix(), sheared);
}

RC_GTEST_PROP(Transform3DProperty, ASetterAfterSetMatrixKeepsTheOtherParts, ())
{
    const auto source = transform();
    source->setRotatePivot(Pnt3f(mathtest::vector(2)));
    source->setTranslation(mathtest::vector(2));
    source->setRotationAsQuaternion(mathtest::rotation());
    source->setScale(Vec3f(2, 0.5F, *rc::gen::element(-1.0F, 3.0F)));

    const auto core = transform();
    core->setScalePivot(Pnt3f(9, 9, 9));
    core->setMatrix(source->getMatrix());
    const Vec3f moved = mathtest::vector(5);
    core->setTranslation(moved);
    Matrix expected = source->getMatrix();
    for (unsigned row = 0; row < 3; ++row)
        expected(row, 3) = moved[row];
    RC_ASSERT(isNear(core->getMatrix(), expected, 5 * Rounding));
}

TEST(Decompose, ReproducesScalesOfAllSignsAndSizesWithMirroringsAlongZ)
{
    std::vector<Vec3f> scales{Vec3f(-1, 1, 1), Vec3f(1, -2, 1), Vec3f(-1, -1, -3)};
    for (const float size : {1e-18F, 1e-9F, 1e9F, 1e18F})
        scales.emplace_back(size, 2 * size, 3 * size);
    for (unsigned zeros = 0; zeros < 8; ++zeros)
        scales.emplace_back(zeros & 1U ? 0.F : 2.F, zeros & 2U ? 0.F : 3.F,
                            zeros & 4U ? 0.F : -4.F);
    for (const Vec3f& scale : scales)
        for (const Quaternion& q :
             {Quaternion(), Quaternion::fromEulerDegrees(Vec3f(20, 130, -75))})
        {
            const Matrix m = Matrix::rotation(q) * Matrix::scaling(scale);
            const TransformParts parts = decompose(m);
            EXPECT_TRUE(isNear(composed(parts), m, 2 * Rounding * scale.length()));
            EXPECT_NEAR(parts.rotation.norm(), 1, 1e-6);
            EXPECT_GE(parts.scale.x(), 0);
            EXPECT_GE(parts.scale.y(), 0);
        }
}

TEST(Decompose, DropsShear)
{
    const TransformParts parts =
        decompose(Matrix({1, 7, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 1}));
    EXPECT_TRUE(isNear(parts.scale, Vec3f(1, 2, 3), Rounding));
    EXPECT_TRUE(isNear(Matrix::rotation(parts.rotation), Matrix(), Rounding));
}

TEST(Decompose, MakesNoRotationFromWhatIsNotFinite)
{
    Matrix m = Matrix::translation(Vec3f(1, 2, 3));
    m(1, 1) = std::nanf("");
    const TransformParts parts = decompose(m);
    EXPECT_EQ(parts.rotation, Quaternion());
    EXPECT_EQ(parts.scale, Vec3f(1, 1, 1));
    EXPECT_EQ(parts.translation, Vec3f(1, 2, 3));
}

TEST(ToWorld, MultipliesTheTransformsFromTheRootDown)
{
    const RefPtr<Node> root(Node::create());
    const NodePtr middle = Node::create();
    const NodePtr group = Node::create();
    const NodePtr leaf = Node::create();
    root->addChild(middle);
    middle->addChild(group);
    group->addChild(leaf);
    const auto move = transform();
    move->setTranslation(Vec3f(1, 0, 0));
    const auto grow = transform();
    grow->setScale(Vec3f(2, 2, 2));
    root->setCore(move);
    middle->setCore(grow);
    group->setCore(Group::create());
    EXPECT_EQ(leaf->getToWorld().transformPoint(Pnt3f(1, 1, 1)), Pnt3f(3, 2, 2));
    EXPECT_EQ(root->getToWorld(), move->getMatrix()) << "a node's own core counts";

    leaf->setCore(move);
    EXPECT_EQ(leaf->getToWorld().transformPoint(Pnt3f(1, 1, 1)), Pnt3f(5, 2, 2));
    root->subChild(middle); // which takes what is below along
    const RefPtr<Node> alone(Node::create());
    EXPECT_EQ(alone->getToWorld(), Matrix());
}

} // namespace
