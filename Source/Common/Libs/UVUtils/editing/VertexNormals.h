#pragma once

#include "OpenSG/Vector.h"

#include <span>
#include <vector>

/// [vertex] The normals of the triangles at each vertex, by their areas, scaled to length 1. One
/// shorter than Vec3f::ShortestLength is left as it is, a vertex without triangles has 0, 0, 0.
///
/// triangles  three vertices each; their number is a multiple of 3
/// positions  [vertex]
std::vector<osg::Vec3f> areaWeightedNormals(std::span<const unsigned int> triangles,
                                            std::span<const osg::Pnt3f> positions);
