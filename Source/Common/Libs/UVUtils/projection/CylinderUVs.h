#pragma once

#include "OpenSG/Matrix.h"

#include <span>

/// An image around a cylinder. The cylinder's own space has the axis along y, from -0.5 to 0.5, and
/// the radius 1; angles around it count from +z, up towards +x.
struct CylinderImage
{
    osg::Matrix toCylinder; ///< from the space of the positions
    osg::Matrix turn;       ///< of the image, which covers x and y from 0 to 1
    float angle = 0;        ///< that the image spans about +z, in radians
};

/// Wraps an image around triangles and writes where their corners fall on it: U from 0 to 1 over
/// the angle of the image, V over the height of the cylinder, then turned. Both run on beyond the
/// image. A triangle across the seam at the back stays in one piece.
///
/// corners  [3 * triangle]  ids of positions; one beyond the positions is at the origin
/// uvs      by the same ids; where an id comes twice the later corner wins, and one beyond the end
///          is dropped. What no corner names stays.
///
/// Corners on the axis, nearer than 1e-6, have whatever angle is left of their coordinates. Linear.
void wrapAroundCylinder(std::span<const osg::Pnt3f> positions, std::span<const unsigned> corners,
                        const CylinderImage& image, std::span<osg::Vec2f> uvs);
