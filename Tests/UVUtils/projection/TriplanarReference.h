#pragma once

#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Vector.h"

#include <vector>

/// The axis of each triangle, -1 for none, worked out with maps and without any speed.
///
/// corners    three positions a triangle, of whole numbers, which makes angles exact
/// propagate  spread axes over triangles that could take several
std::vector<int> axesByMaps(const std::vector<osg::Pnt3f>& corners, bool propagate);

/// The way in which U and V run on the image of an axis.
struct ImageDirections
{
    osg::Vec3f u;
    osg::Vec3f v;
};
ImageDirections directionsOf(int axis);
