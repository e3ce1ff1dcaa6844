#include "UVUtils/projection/PlaneOrientation.h"

#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/DegreesRadians.h"

#include <cmath>

namespace
{

constexpr float HalfPiF = PiF / 2;

/// Directions within this of each other, in each component, count as one.
constexpr float SameDirection = 0.01F;

constexpr osg::Vec3f AxisX(1, 0, 0);
constexpr osg::Vec3f AxisY(0, 1, 0);
constexpr osg::Vec3f AxisZ(0, 0, 1);

/// Normalised after each factor, so that rounding doesn't gather.
osg::Quaternion turnedBy(const osg::Quaternion& rotation, const osg::Vec3f& axis, float angle)
{
    const double radians = static_cast<double>(angle);
    return (rotation * osg::Quaternion::fromAxisAngle(axis, radians)).normalized();
}

bool isNearZero(const osg::Vec3f& v)
{
    return std::abs(v.x()) <= SameDirection && std::abs(v.y()) <= SameDirection &&
           std::abs(v.z()) <= SameDirection;
}

} // namespace

osg::Quaternion planeOrientation(const PlaneAngles& angles, bool isZUp)
{
    if (!isZUp)
        return turnedBy(turnedBy({}, AxisY, angles.phi), AxisX, angles.theta);
    const osg::Quaternion placed = turnedBy(turnedBy({}, AxisZ, angles.phi), AxisX, angles.theta);
    return turnedBy(placed, AxisX, radiansFromDegrees(-90));
}

PlaneAngles anglesOfNormal(const osg::Vec3f& normal, bool isZUp)
{
    if (isZUp) {
        const auto s = kyNodeUtils::cartesianToSpherical(normal.x(), normal.y(), normal.z());
        return {s.x() + HalfPiF, s.y() + HalfPiF};
    }
    const auto s = kyNodeUtils::cartesianToSpherical(normal.x(), -normal.z(), normal.y());
    return {s.x() + HalfPiF, s.y() - HalfPiF};
}

osg::Quaternion imageRotation(float rhoDegrees)
{
    return osg::Quaternion::fromAxisAngle(AxisZ,
                                          -static_cast<double>(radiansFromDegrees(rhoDegrees)));
}

osg::Vec3f normalAfterTurn(const osg::Vec3f& axis, float angle, const osg::Quaternion& rotation)
{
    osg::Quaternion turn;
    if (axis.length() > osg::Vec3f::ShortestLength)
        turn = osg::Quaternion::fromAxisAngle(axis, static_cast<double>(angle));
    return rotation.rotate(turn.rotate(AxisZ));
}

double signedAngleAbout(const osg::Vec3f& from, const osg::Vec3f& to, const osg::Vec3f& normal)
{
    const osg::Vec3f a = from.normalized();
    const osg::Vec3f b = to.normalized();
    if (isNearZero(a - b))
        return 0.0;
    if (isNearZero(a + b))
        return -static_cast<double>(PiF);
    const double angle = std::acos(static_cast<double>(a.dot(b)));
    if (!std::isfinite(angle))
        return 0.0;
    return a.cross(b).dot(normal) < 0.0F ? -angle : angle;
}

osg::Vec3f degreesFacingBox(const osg::Pnt3f& min, const osg::Pnt3f& max)
{
    // In double, so that areas of large boxes stay apart and finite.
    const osg::Vector<double, 3> size(max - min);
    const double acrossZ = size.x() * size.y();
    const double acrossX = size.y() * size.z();
    const double acrossY = size.x() * size.z();
    if (acrossX >= acrossZ && acrossX >= acrossY)
        return osg::Vec3f(90, 180, 0);
    if (acrossZ >= acrossX && acrossZ >= acrossY)
        return osg::Vec3f(0, 90, 0);
    return osg::Vec3f(0, 180, 0);
}
