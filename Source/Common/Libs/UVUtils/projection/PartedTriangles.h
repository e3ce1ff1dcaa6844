#pragma once

#include "OpenSG/Geometry.h"

#include <vector>

// A projection that gives the triangles at a vertex different UVs parts the triangles before, and
// joins again what came out equal.

/// The vertices of triangles that share none, three each, in the order of the triangles.
struct PartedTriangles
{
    std::vector<unsigned int> corners; ///< [3 * triangle + corner] the vertex
    /// [3 * triangle + corner] the vertex that it was made from, by the ids before; empty where
    /// the triangles were apart already.
    std::vector<unsigned int> sources;
};

/// Gives every triangle three vertices of its own, all other primitives are dropped; does nothing
/// to a geometry that is so already, in whatever order the vertices are named, or that has no
/// triangles. Notices go out with a change. Not for a geometry without positions. Linear in corners
/// times vertex properties.
PartedTriangles partTriangles(const osg::GeometryPtr& geometry);

/// Joins vertices that are equal in all properties. Triangles keep their order and corners.
void joinEqualCorners(const osg::GeometryPtr& geometry);
