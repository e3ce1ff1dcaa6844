#include "OpenSGExt/kyOpenSGExt.h"
#include "UVUtils/model/DegreesRadians.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"

#include <algorithm>
#include <cmath>

// The settings of a cylinder that fits geometry and image.

namespace
{

/// The edges of a box along the axes of a body that stands turned, as lengths.
osg::Vec3f sizeAlongBody(const osg::Vec3f& boxSize, const osg::Vec3f& bodyDegrees)
{
    const osg::Quaternion rotation = osg::Quaternion::fromEulerDegrees(bodyDegrees);
    const osg::Vec3f size = rotation.conjugated().rotate(boxSize);
    return osg::Vec3f(std::abs(size.x()), std::abs(size.y()), std::abs(size.z()));
}

} // namespace

void kyUVCylindricalProjection::getScaleAndCenterFromGeometry(
    const std::vector<osg::NodePtr>& nodes, kyUVCylindricalProjectionSettings& settings)
{
    osg::Vec3f center;
    osg::Pnt3f min;
    osg::Pnt3f max;
    calculateBoundingBox(nodes, center, min, max);
    const osg::Vec3f size = sizeAlongBody(max - min, settings.getProjectionRotation());
    if (kyOpenSGExt::isCameraZUp()) {
        const float radius = std::max(size.z(), size.x()) * 0.5F;
        settings.setProjectionScale(osg::Vec3f(radius, size.y(), radius));
    } else {
        const float radius = std::max(size.y(), size.x()) * 0.5F;
        settings.setProjectionScale(osg::Vec3f(radius, radius, size.z()));
    }
    settings.setProjectionCenter(center);
}

void kyUVCylindricalProjection::applyScalePreservingAspectRatio(
    kyUVCylindricalProjectionSettings& settings)
{
    const osg::Vec3f scale = settings.getProjectionScale();
    const double aspect = settings.getAspectRatio();
    const auto circumference = static_cast<double>(TwoPiF * scale.x());
    const auto angle =
        static_cast<float>(static_cast<double>(scale.y()) * aspect / circumference * 360.0);
    if (angle > 360.0F) {
        settings.setProjectionUAngle(360.0);
        settings.setProjectionScale(
            osg::Vec3f(scale.x(), static_cast<float>(circumference / aspect), scale.z()));
    } else {
        settings.setProjectionUAngle(static_cast<double>(angle));
    }
}

kyUVCylindricalProjectionSettings
kyUVCylindricalProjection::getDefaultSettings(const std::vector<osg::NodePtr>& nodes,
                                              unsigned int imageWidth, unsigned int imageHeight)
{
    // As made: no offset or rotation, and half the way around.
    kyUVCylindricalProjectionSettings settings;
    if (nodes.empty())
        return settings;
    getScaleAndCenterFromGeometry(nodes, settings);
    const bool hasImage = imageWidth != 0 && imageHeight != 0;
    settings.setKeepAspectRatio(hasImage);
    if (hasImage) {
        settings.setTextureWidth(static_cast<float>(imageWidth));
        settings.setTextureHeight(static_cast<float>(imageHeight));
        settings.setAspectRatio(
            static_cast<double>(static_cast<float>(imageWidth) / static_cast<float>(imageHeight)));
        applyScalePreservingAspectRatio(settings);
    }
    if (!kyOpenSGExt::isCameraZUp()) {
        // The proportions stay those of the cylinder before it is turned.
        const osg::Vec3f scale = settings.getProjectionScale();
        settings.setProjectionRotation(osg::Vec3f(-90, 0, 0));
        settings.setProjectionScale(osg::Vec3f(scale.x(), scale.z(), scale.y()));
    }
    return settings;
}
