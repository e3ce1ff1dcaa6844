#pragma once

#include "OpenSG/TinyGeometry.h"

#include <vector>

/// What the triplanar projection has to make of triangles, worked out without any speed.
namespace reference
{

using Masks = std::vector<unsigned char>;

/// The axis of each triangle as a mask, 0 for none, where those with several candidates follow
/// others. Those with one take it.
///
/// places  [3 * triangle + corner] equal for corners at the same place
Masks propagatedAxes(const tiny::Ids& places, const Masks& candidates);

/// The way in which U and V run on the image of an axis.
struct ImageDirections
{
    osg::Vec3f u;
    osg::Vec3f v;
};
ImageDirections directionsOf(int axis);

} // namespace reference
