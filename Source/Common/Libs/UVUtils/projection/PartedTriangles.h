#pragma once

#include "OpenSG/Geometry.h"

#include <vector>

// A projection that gives the triangles at a vertex different UVs parts the triangles before, and
// joins again what came out equal.

/// Gives every triangle three vertices of its own, all other primitives are dropped; does nothing
/// to a geometry that is so already, in whatever order the vertices are named, or that has no
/// triangles. Notices go out with a change.
///
/// Returns the vertices of the triangles, three each, in the order of the triangles. Ids beyond the
/// positions can come back only where nothing was changed, from triangles without any position.
/// Linear in corners times vertex properties.
std::vector<unsigned int> partTriangles(const osg::GeometryPtr& geometry);

/// Joins vertices that are equal in all properties. Triangles keep their order and corners.
void joinEqualCorners(const osg::GeometryPtr& geometry);
