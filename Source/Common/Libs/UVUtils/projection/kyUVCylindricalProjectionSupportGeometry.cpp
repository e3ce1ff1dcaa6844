#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/SimpleGeometry.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/projection/CylinderTransforms.h"
#include "UVUtils/projection/SupportMaterials.h"
#include "UVUtils/projection/SupportNodes.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"

#include <numbers>

namespace
{

osg::Quaternion aboutAxis(double degrees)
{
    return osg::Quaternion::fromAxisAngle(osg::Vec3f(0, 1, 0), degrees * std::numbers::pi / 180);
}

void turnLimitPlane(const osg::NodePtr& node, double degrees)
{
    const auto transform = osg::coreAs<osg::Transform3D>(node);
    if (!transform)
        return;
    transform->setRotationAsQuaternion(aboutAxis(degrees));
    osg::notifyChanged(transform, osg::Transform3D::RotationFieldMask);
}

} // namespace

void kyUVCylindricalProjectionSupportGeometry::init(const osg::BlendChunkPtr& blendChunk)
{
    material_ =
        SupportMaterials::makePlaneMaterial("kyTextureEditor::cylindrictexmapmat", {blendChunk});
    cylinderNode_ =
        SupportNodes::finishShape(osg::makeCylinder(1, 1, 64, true, false, false), material_);
    limitPlanes_ = {makeLimitPlane(), makeLimitPlane()};
    groupNode_ = SupportNodes::makeTransform("", {cylinderNode_, limitPlanes_[0], limitPlanes_[1]});
    transform3D_ = SupportNodes::makeTransform("", {groupNode_});
    kyNodeUtils::setTransformNodeScale(transform3D_, osg::Vec3f(1, 1, 1), kyNodeUtils::NoKeyFrame);
    transform2D_ = SupportNodes::makeTransform("", {});
    CylinderTransforms::placeImage(transform2D_, 0);
    setActive(false);
}

/// The pivot is the point of the plane that stands on the cylinder's axis, so the plane swings
/// about it like a door.
osg::NodePtr kyUVCylindricalProjectionSupportGeometry::makeLimitPlane() const
{
    const auto transform = osg::Transform3D::create();
    transform->setTranslation(osg::Vec3f(0.5F, 0, 0));
    transform->setRotationAsQuaternion(aboutAxis(-90));
    transform->setRotatePivot(osg::Pnt3f(-0.5F, 0, 0));
    return SupportNodes::makeNode(transform, "", {SupportNodes::makePlane(1, 1, material_)});
}

void kyUVCylindricalProjectionSupportGeometry::setActive(bool isActive)
{
    SupportNodes::setActive(transform3D_, isActive);
}

void kyUVCylindricalProjectionSupportGeometry::setOpacity(float opacity)
{
    SupportMaterials::setOpacity(material_, opacity);
}

void kyUVCylindricalProjectionSupportGeometry::setProjectionUAngle(double angle)
{
    turnLimitPlane(limitPlanes_[0], -0.5 * angle - 90);
    turnLimitPlane(limitPlanes_[1], 0.5 * angle - 90);
}

void kyUVCylindricalProjectionSupportGeometry::applySettings(
    const kyUVCylindricalProjectionSettings& settings)
{
    CylinderTransforms::placeBody(transform3D_, settings);
    CylinderTransforms::turnImage(transform2D_, settings.getCylindricRotation2D());
    setProjectionUAngle(settings.getProjectionUAngle());
}
