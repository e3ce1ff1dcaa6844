#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/Transform3D.h"
#include "UVUtils/model/DegreesRadians.h"
#include "UVUtils/projection/TriplanarAxes.h"
#include "UVUtils/projection/kyUVTriPlanarProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

// Where the projection box and the images on its sides stand.

namespace
{

/// The number of the pair of opposite sides that an axis belongs to.
unsigned int pairOf(int axis)
{
    return triplanar::knownAxis(axis) % 3;
}

/// Of the axes 3, 4 and 5, whose images stand the other way round.
bool isOpposite(int axis)
{
    return triplanar::knownAxis(axis) >= 3;
}

float halfSize(float repeat, float size)
{
    return 1.0F / repeat * 0.5F * size;
}

void setNodeMatrix(const osg::NodePtr& node, const osg::Matrix& matrix)
{
    const auto transform = osg::coreAs<osg::Transform3D>(node);
    if (!transform)
        return;
    transform->setMatrix(matrix);
    osg::notifyChanged(transform, osg::TransformBase::MatrixFieldMask);
}

} // namespace

osg::Quaternion
kyUVTriplanarProjection::getRotation3D(const kyUVTriplanarProjectionSettings& settings)
{
    return osg::Quaternion::fromEulerDegrees(settings.getRotation3D());
}

osg::Vec3f kyUVTriplanarProjection::getCenter(const kyUVTriplanarProjectionSettings& settings)
{
    return settings.getCenter();
}

osg::Vec2f kyUVTriplanarProjection::getRepeat(int axis,
                                              const kyUVTriplanarProjectionSettings& settings)
{
    const unsigned int k = pairOf(axis);
    return osg::Vec2f(settings.getRepeatU()[k], settings.getRepeatV()[k]);
}

osg::Vec2f kyUVTriplanarProjection::getOffset(int axis,
                                              const kyUVTriplanarProjectionSettings& settings)
{
    const unsigned int k = pairOf(axis);
    const float u = settings.getOffsetU()[k];
    return osg::Vec2f(isOpposite(axis) ? -u : u, settings.getOffsetV()[k]);
}

osg::Quaternion
kyUVTriplanarProjection::getRotation2D(int axis, const kyUVTriplanarProjectionSettings& settings)
{
    const float degrees = settings.getRotation2D()[pairOf(axis)];
    return osg::Quaternion::fromAxisAngle(
        osg::Vec3f(0, 0, 1), radiansFromDegrees(isOpposite(axis) ? degrees : -degrees));
}

osg::Matrix
kyUVTriplanarProjection::calculateProjectionMatrix(const kyUVTriplanarProjectionSettings& settings)
{
    const osg::Matrix matrix = osg::Matrix::translation(getCenter(settings)) *
                               osg::Matrix::rotation(getRotation3D(settings));
    updateSupportGeometryProjection(matrix);
    return matrix;
}

osg::Matrix
kyUVTriplanarProjection::calculateTextureTransform(int axis,
                                                   const kyUVTriplanarProjectionSettings& settings)
{
    const osg::Vec2f offset = getOffset(axis, settings);
    const osg::Vec2f repeat = getRepeat(axis, settings);
    const osg::Vec3f scale(halfSize(repeat.x(), settings.getWidth()),
                           halfSize(repeat.y(), settings.getHeight()), 1.0F);
    const osg::Matrix matrix =
        triplanar::getAxisToZ(axis) *
        osg::Matrix::translation(osg::Vec3f(-offset.x(), -offset.y(), -0.F)) *
        osg::Matrix::rotation(getRotation2D(axis, settings)) * osg::Matrix::scaling(scale);
    updateSupportGeometryTextureTransform(axis, matrix);
    return matrix;
}

void kyUVTriplanarProjection::updateSupportGeometryProjection(const osg::Matrix& matrix)
{
    if (const auto* const support = getTriPlanarSupportGeometry())
        setNodeMatrix(support->getProjectionTransformNode(), matrix);
}

void kyUVTriplanarProjection::updateSupportGeometryTextureTransform(int axis,
                                                                    const osg::Matrix& matrix)
{
    setNodeMatrix(getSupportGeometryPlane(axis), matrix);
}

osg::NodePtr kyUVTriplanarProjection::getSupportGeometryPlane(int axis)
{
    const auto* const support = getTriPlanarSupportGeometry();
    if (!support)
        return osg::NullFC;
    switch (axis) {
    case 0:
        return support->getXPlane();
    case 1:
        return support->getYPlane();
    case 2:
        return support->getZPlane();
    default:
        return osg::NullFC;
    }
}
