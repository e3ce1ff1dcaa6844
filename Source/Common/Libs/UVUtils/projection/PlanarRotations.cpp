#include "OpenSGExt/kyOpenSGExt.h"
#include "UVUtils/model/DegreesRadians.h"
#include "UVUtils/projection/PlaneOrientation.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"

// The angles of a plane, by the settings and by the axis that is up for the camera.

osg::Quaternion kyUVPlanarProjection::calculate3DRotation(float phi, float theta)
{
    return planeOrientation({phi, theta}, kyOpenSGExt::isCameraZUp());
}

osg::Quaternion kyUVPlanarProjection::get3DRotation(const kyUVPlanarProjectionSettings& settings)
{
    const osg::Vec3f degrees = settings.getProjectionRotation();
    return calculate3DRotation(radiansFromDegrees(degrees.x()), radiansFromDegrees(degrees.y()));
}

osg::Quaternion kyUVPlanarProjection::get2DRotation(const kyUVPlanarProjectionSettings& settings)
{
    return imageRotation(settings.getProjectionRotation().z());
}

void kyUVPlanarProjection::calculateProjectionRotationFromNormal(const osg::Vec3f& normal,
                                                                 float& phi, float& theta)
{
    const PlaneAngles angles = anglesOfNormal(normal, kyOpenSGExt::isCameraZUp());
    phi = angles.phi;
    theta = angles.theta;
}

osg::Vec3f kyUVPlanarProjection::rotatePlanarProjectionPlaneNormal(const osg::Vec3f& axis,
                                                                   float angle,
                                                                   const osg::Quaternion& rotation)
{
    return normalAfterTurn(axis, angle, rotation);
}

osg::Vec3f kyUVPlanarProjection::getPlanarWorldAxis(const osg::Vec3f& axis,
                                                    const osg::Quaternion& rotation)
{
    return rotation.rotate(axis).normalized();
}

double kyUVPlanarProjection::rotateInPlanarProjectionSpace(const osg::Vec3f& from,
                                                           const osg::Vec3f& to,
                                                           const osg::Vec3f& normal)
{
    return signedAngleAbout(from, to, normal);
}

void kyUVPlanarProjection::calculateProjectionRotation(kyUVPlanarProjectionSettings& settings,
                                                       const osg::Vec3f& axis, float angle,
                                                       const osg::Quaternion& rotation)
{
    const osg::Vec3f normal = rotatePlanarProjectionPlaneNormal(axis, angle, rotation);
    float phi = 0;
    float theta = 0;
    calculateProjectionRotationFromNormal(normal, phi, theta);
    // The turn leaves its axis where it was; the two angles alone may put it elsewhere in the
    // plane. The image has to follow.
    const osg::Vec3f planeAxis = calculate3DRotation(phi, theta).rotate(axis);
    const double turn =
        rotateInPlanarProjectionSpace(planeAxis, getPlanarWorldAxis(axis, rotation), normal);
    const double rho = turn / static_cast<double>(TwoPiF) * -360.0;
    settings.setProjectionRotation(
        osg::Vec3f(degreesFromRadians(phi), degreesFromRadians(theta), static_cast<float>(rho)));
}

osg::Vec3f
kyUVPlanarProjection::getLocalProjectionPlaneCenter(const kyUVPlanarProjectionSettings& settings,
                                                    float distance)
{
    return settings.getProjectionCenter() + osg::Vec3f(0.0F, 0.0F, distance);
}

void kyUVPlanarProjection::initializeOrientation(kyUVPlanarProjectionSettings& settings,
                                                 const osg::Pnt3f& min, const osg::Pnt3f& max)
{
    settings.setProjectionRotation(degreesFacingBox(min, max));
}
