#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/Group.h"
#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"

#include <algorithm>

using namespace osg;

namespace
{

struct TransformNode
{
    TransformNode() { node->setCore(core); }

    Pnt3f image(const Pnt3f& point) const { return core->getMatrix().transformPoint(point); }

    RefPtr<Node> node{Node::create()};
    RefPtr<Transform3D> core{Transform3D::create()};
};

RC_GTEST_PROP(TransformNodesProperty, APivotAgainstTheTranslationStandsTheSpaceOffTheCenter, ())
{
    const Vec3f center = mathtest::vector(3);
    const Vec3f degrees = mathtest::vector(180);
    const Vec3f point = mathtest::vector(2);
    const Vec3f distance(0, 0, mathtest::number(5));
    const TransformNode t;
    kyNodeUtils::setTransformNodeTranslation(t.node, center + distance, true, -1);
    kyNodeUtils::setTransformNodeRotation(t.node, degrees, -1);
    kyNodeUtils::setTransformNodeRotatePivot(t.node, -distance, false, -1);
    const Vec3f turned = Quaternion::fromEulerDegrees(degrees).rotate(point + distance);
    RC_ASSERT(mathtest::isNear(t.image(Pnt3f(point)), Pnt3f(center + turned), 1e-4F));
}

RC_GTEST_PROP(TransformNodesProperty, APivotThatKeepsThePlaceChangesNothingButTheFields, ())
{
    const TransformNode t;
    kyNodeUtils::setTransformNodeTranslation(t.node, mathtest::vector(3), false, -1);
    kyNodeUtils::setTransformNodeTranslation(t.node, mathtest::vector(3), false, -1);
    kyNodeUtils::setTransformNodeRotation(t.node, mathtest::vector(180), -1);
    kyNodeUtils::setTransformNodeScale(t.node, mathtest::vector(2), -1);
    const Matrix before = t.core->getMatrix();
    const Vec3f rotatePivot = mathtest::vector(2);
    const Vec3f scalePivot = mathtest::vector(2);
    kyNodeUtils::setTransformNodeRotatePivot(t.node, rotatePivot, true, -1);
    kyNodeUtils::setTransformNodeScalePivot(t.node, scalePivot, true, -1);
    RC_ASSERT(t.core->getRotatePivot() == Pnt3f(rotatePivot));
    RC_ASSERT(t.core->getScalePivot() == Pnt3f(scalePivot));
    RC_ASSERT(mathtest::isNear(t.core->getMatrix(), before, 2e-5F));
}

TEST(TransformNodes, ReportTheFieldThatWasSetAndPassOverOtherNodes)
{
    const TransformNode t;
    tiny::NoticeJournal journal;
    journal.watch(t.core);
    kyNodeUtils::setTransformNodeTranslation(t.node, Vec3f(1, 2, 3), true, -1);
    kyNodeUtils::setTransformNodeRotation(t.node, Vec3f(), -1);
    kyNodeUtils::setTransformNodeScale(t.node, Vec3f(1, 1, 1), -1);
    kyNodeUtils::setTransformNodeScalePivot(t.node, Vec3f(), false, -1);
    kyNodeUtils::setTransformNodeRotatePivot(t.node, Vec3f(), true, -1);
    using T = Transform3D;
    std::vector<FieldMask> masks(journal.notices.size());
    std::transform(journal.notices.begin(), journal.notices.end(), masks.begin(),
                   [](const auto& notice) { return notice.mask; });
    EXPECT_EQ(masks, (std::vector<FieldMask>{T::TranslationFieldMask, T::RotationFieldMask,
                                             T::ScaleFieldMask, T::ScalePivotFieldMask,
                                             T::RotatePivotFieldMask | T::TranslationFieldMask}));

    const RefPtr<Node> group(Node::create());
    for (const NodePtr& other : {NodePtr(), group.get()}) {
        kyNodeUtils::setTransformNodeTranslation(other, Vec3f(1, 1, 1), false, -1);
        kyNodeUtils::setTransformNodeScalePivot(other, Vec3f(1, 1, 1), true, -1);
        group->setCore(Group::create());
    }
}

} // namespace
