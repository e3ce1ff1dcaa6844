#include "UVUtils/projection/CylinderTransforms.h"

#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/projection/kyUVBaseProjectionSettings.h"

namespace CylinderTransforms
{

using kyNodeUtils::NoKeyFrame;

namespace
{

constexpr osg::Vec3f imageMiddle(0.5F, 0.5F, 0);

} // namespace

void placeBody(const osg::NodePtr& node, const kyUVBaseProjectionSettings& settings)
{
    kyNodeUtils::setTransformNodeTranslation(node, settings.getProjectionCenter(), true,
                                             NoKeyFrame);
    kyNodeUtils::setTransformNodeRotation(node, settings.getProjectionRotation(), NoKeyFrame);
    kyNodeUtils::setTransformNodeScale(node, settings.getProjectionScale(), NoKeyFrame);
}

void placeImage(const osg::NodePtr& node, double degrees)
{
    kyNodeUtils::setTransformNodeScale(node, osg::Vec3f(1, 1, 1), NoKeyFrame);
    kyNodeUtils::setTransformNodeScalePivot(node, imageMiddle, false, NoKeyFrame);
    turnImage(node, degrees);
}

void turnImage(const osg::NodePtr& node, double degrees)
{
    kyNodeUtils::setTransformNodeRotatePivot(node, imageMiddle, false, NoKeyFrame);
    kyNodeUtils::setTransformNodeRotation(node, osg::Vec3f(0, 0, static_cast<float>(degrees)),
                                          NoKeyFrame);
}

} // namespace CylinderTransforms
