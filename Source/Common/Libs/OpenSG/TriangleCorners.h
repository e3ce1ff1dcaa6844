#pragma once

#include "OpenSG/Geometry.h"

#include <vector>

namespace osg
{

/// The vertex ids of the corners of all triangles, three a triangle, in the order of
/// TriangleIterator and with its rules. Linear in corners.
std::vector<unsigned int> triangleCorners(const Geometry& geometry);

} // namespace osg
