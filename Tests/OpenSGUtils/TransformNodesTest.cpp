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

    RefPtr<Node> node{Node::create()};
    RefPtr<Transform3D> core{Transform3D::create()};
};

RC_GTEST_PROP(TransformNodesProperty, SetFieldsAndAPivotThatKeepsThePlaceMovesNothing, ())
{
    const TransformNode t;
    const Vec3f start = mathtest::vector(3);
    const Vec3f way = mathtest::vector(3);
    const Vec3f degrees = mathtest::vector(180);
    const Vec3f factors = mathtest::vector(2);
    kyNodeUtils::setTransformNodeTranslation(t.node, mathtest::vector(3), true, -1);
    kyNodeUtils::setTransformNodeTranslation(t.node, start, true, -1);
    kyNodeUtils::setTransformNodeTranslation(t.node, way, false, -1);
    kyNodeUtils::setTransformNodeRotation(t.node, degrees, -1);
    kyNodeUtils::setTransformNodeScale(t.node, factors, -1);
    RC_ASSERT(t.core->getTranslation() == start + way);
    RC_ASSERT(t.core->getRotationAsQuaternion() == Quaternion::fromEulerDegrees(degrees));
    RC_ASSERT(t.core->getScale() == factors);

    const Matrix before = t.core->getMatrix();
    const Vec3f rotatePivot = mathtest::vector(2);
    const Vec3f scalePivot = mathtest::vector(2);
    kyNodeUtils::setTransformNodeRotatePivot(t.node, rotatePivot, true, -1);
    kyNodeUtils::setTransformNodeScalePivot(t.node, scalePivot, true, -1);
    RC_ASSERT(mathtest::isNear(t.core->getMatrix(), before, 2e-5F));
    const Vec3f translation = t.core->getTranslation();
    kyNodeUtils::setTransformNodeRotatePivot(t.node, scalePivot, false, -1);
    kyNodeUtils::setTransformNodeScalePivot(t.node, rotatePivot, false, -1);
    RC_ASSERT(t.core->getRotatePivot() == Pnt3f(scalePivot));
    RC_ASSERT(t.core->getScalePivot() == Pnt3f(rotatePivot));
    RC_ASSERT(t.core->getTranslation() == translation);
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
