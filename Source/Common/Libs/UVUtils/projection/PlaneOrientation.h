#pragma once

#include "OpenSG/Quaternion.h"
#include "OpenSG/Vector.h"

// How the plane of a planar projection stands in the world. Its normal is the plane's local +Z,
// and two angles place it; U and V run along local x and y, and a third angle, rho, turns the
// image within the plane.
//
//     camera up Y: R(Y, phi) R(X, theta)                  phi = theta = 0: the normal is +Z
//     camera up Z: R(Z, phi) R(X, theta) R(X, -90 deg)    phi = theta = 0: the normal is +Y
//
// Angles are radians where a name doesn't say degrees.

struct PlaneAngles
{
    float phi = 0;
    float theta = 0;
};

/// The rotation that the two angles stand for, of norm 1.
osg::Quaternion planeOrientation(const PlaneAngles& angles, bool isZUp);

/// The angles whose orientation carries +Z onto a direction of any length.
PlaneAngles anglesOfNormal(const osg::Vec3f& normal, bool isZUp);

/// The turn of the image within its plane: R(Z, -rho).
osg::Quaternion imageRotation(float rhoDegrees);

/// The normal of a plane that stands as `rotation` says, after a turn about an axis of its own
/// space. The axis may have any length; one of 1e-6 or less gives no turn. Of length 1 if
/// `rotation` is of norm 1.
osg::Vec3f normalAfterTurn(const osg::Vec3f& axis, float angle, const osg::Quaternion& rotation);

/// The angle from one direction to another, in -pi to pi; negative where the turn is clockwise seen
/// from the tip of `normal`.
///
/// Directions that agree within 0.01 in each component are 0 apart, opposite ones -pi. 0 where
/// there is no angle, as with NaNs and with directions too short to have one.
double signedAngleAbout(const osg::Vec3f& from, const osg::Vec3f& to, const osg::Vec3f& normal);

/// The three stored angles, in degrees, of a plane that faces the largest side of a box. Of sides
/// of one size the one across x comes first, then the one across z.
osg::Vec3f degreesFacingBox(const osg::Pnt3f& min, const osg::Pnt3f& max);
