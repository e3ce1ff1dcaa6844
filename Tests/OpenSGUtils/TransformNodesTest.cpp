#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/Group.h"
#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"

#include <algorithm>
#include <vector>

using namespace osg;

namespace
{

RC_GTEST_PROP(TransformNodesProperty, SetFieldsAndAPivotThatKeepsThePlaceMovesNothing, ())
{
    using T = Transform3D;
    const Transform3DPtr core = T::create();
    const RefPtr<Node> node(Node::create());
    node->setCore(core);
    tiny::NoticeJournal journal;
    journal.watch(core);
    const Vec3f start = mathtest::vector(3);
    const Vec3f way = mathtest::vector(3);
    const Vec3f degrees = mathtest::vector(180);
    const Vec3f factors = mathtest::vector(2);
    kyNodeUtils::setTransformNodeTranslation(node, mathtest::vector(3), true, -1);
    kyNodeUtils::setTransformNodeTranslation(node, start, true, -1);
    kyNodeUtils::setTransformNodeTranslation(node, way, false, -1);
    kyNodeUtils::setTransformNodeRotation(node, degrees, -1);
    kyNodeUtils::setTransformNodeScale(node, factors, -1);
    RC_ASSERT(core->getTranslation() == start + way);
    RC_ASSERT(core->getRotationAsQuaternion() == Quaternion::fromEulerDegrees(degrees));
    RC_ASSERT(core->getScale() == factors);

    const Matrix before = core->getMatrix();
    const Vec3f rotatePivot = mathtest::vector(2);
    const Vec3f scalePivot = mathtest::vector(2);
    kyNodeUtils::setTransformNodeRotatePivot(node, rotatePivot, true, -1);
    kyNodeUtils::setTransformNodeScalePivot(node, scalePivot, true, -1);
    RC_ASSERT(mathtest::isNear(core->getMatrix(), before, 2e-5F));
    const Vec3f translation = core->getTranslation();
    kyNodeUtils::setTransformNodeRotatePivot(node, scalePivot, false, -1);
    kyNodeUtils::setTransformNodeScalePivot(node, rotatePivot, false, -1);
    RC_ASSERT(core->getRotatePivot() == Pnt3f(scalePivot));
    RC_ASSERT(core->getScalePivot() == Pnt3f(rotatePivot));
    RC_ASSERT(core->getTranslation() == translation);

    std::vector<FieldMask> masks(journal.notices.size());
    std::transform(journal.notices.begin(), journal.notices.end(), masks.begin(),
                   [](const auto& notice) { return notice.mask; });
    RC_ASSERT(masks == (std::vector<FieldMask>{T::TranslationFieldMask, T::TranslationFieldMask,
                                               T::TranslationFieldMask, T::RotationFieldMask,
                                               T::ScaleFieldMask,
                                               T::RotatePivotFieldMask | T::TranslationFieldMask,
                                               T::ScalePivotFieldMask | T::TranslationFieldMask,
                                               T::RotatePivotFieldMask, T::ScalePivotFieldMask}));
}

TEST(TransformNodes, AreLeftAloneWithoutATransform)
{
    const RefPtr<Node> group(Node::create());
    for (const NodePtr& other : {NodePtr(), group.get()}) {
        kyNodeUtils::setTransformNodeTranslation(other, Vec3f(1, 1, 1), false, -1);
        kyNodeUtils::setTransformNodeScalePivot(other, Vec3f(1, 1, 1), true, -1);
        group->setCore(Group::create());
    }
}

} // namespace
