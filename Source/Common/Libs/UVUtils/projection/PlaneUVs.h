#pragma once

#include "OpenSG/Matrix.h"

#include <span>

/// Takes positions onto a plane and writes where they fall on the image there.
///
/// toPlane  into the space in which the image covers x and y from -1 to 1; z is not looked at
/// uvs      as many as there are positions: (x + 1) / 2 and (y + 1) / 2 of each
///
/// Nothing is divided: the last row of the matrix has no effect. Linear.
void projectOntoPlane(std::span<const osg::Pnt3f> positions, const osg::Matrix& toPlane,
                      std::span<osg::Vec2f> uvs);
