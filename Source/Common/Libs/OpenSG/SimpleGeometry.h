#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"

#include <cstdint>
#include <span>

namespace osg
{

/// Which of the coordinate planes a flat shape lies in, by the axis of its normal. Its width and
/// its height run along the two axes that follow in the order x, y, z, x.
enum CoordinateSystem : std::uint32_t
{
    NormalAlongX = 0, ///< width along y, height along z
    NormalAlongY = 1, ///< width along z, height along x
    NormalAlongZ = 2  ///< width along x, height along y
};

// Nodes with simple shapes: each has an osg::Geometry core of triangles with positions, normals and
// texture slot 0, single indexed, counter-clockwise seen from outside, and no material. They are
// null when a measure is not finite and above 0, or when there are more vertices than numbers for
// them. No notice is sent.

/// A rectangle around the origin, cut into columns and rows (0 counts as 1). Its texture
/// coordinates run from 0 to 1, u along the width and v along the height, so that a picture on it
/// stands upright seen from the tip of the normal.
NodePtr makePlane(float width, float height, unsigned columns, unsigned rows,
                  CoordinateSystem system);

/// A cylinder around the origin with its axis along y. Less than 3 sides count as 3.
///
/// hasSide, hasTop, hasBottom  the parts that are made; the node's geometry is empty without any
///
/// On the side a picture goes around once: u is 0.5 on +z and grows towards +x, its seam is on -z,
/// and v grows along y. On top and bottom, which share no vertex with the side, it is centred, with
/// u along +x.
NodePtr makeCylinder(float height, float radius, unsigned sides, bool hasSide, bool hasTop,
                     bool hasBottom);

/// A geometry of lines, as one primitive, without normals and texture coordinates.
///
/// ends  numbers of points, two for each line, which go into its index list as they are
GeometryPtr makeLines(std::span<const Pnt3f> points, std::span<const unsigned> ends);

} // namespace osg
