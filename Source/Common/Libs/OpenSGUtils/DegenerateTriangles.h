#pragma once

#include "OpenSG/Geometry.h"

#include <cstddef>

/// Triangles without an area: two of their vertices are the same, or the cross product of two of
/// their edges is zero at each corner. It is computed in double, so that small triangles are not
/// taken for such. One that has a coordinate which is no finite number, or an index beyond the
/// positions, is degenerate only if it names a vertex twice.
///
/// Only primitives that are lists of triangles are looked at: strips and fans need such triangles,
/// and the corners of a polygon may lie on a line.
namespace DegenerateTriangles
{

/// False for null. Linear in triangles, up to the first one.
bool hasAny(const osg::GeometryPtr& geometry);

/// Takes them out and returns how many there were. The others keep their order, and all vertices
/// stay; so do temporary lists and constraints. Lengths are made to fit, down to 0. Sends the
/// notices, but where nothing is found. Linear in triangles.
std::size_t remove(const osg::GeometryPtr& geometry);

} // namespace DegenerateTriangles
