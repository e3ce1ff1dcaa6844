#pragma once

#include "OpenSG/Geometry.h"

/// Bringing a geometry into another form of the same shape.
///
/// Both operations make a multi-indexed geometry single indexed first. Where vertices change, UV
/// constraints are carried to the new ones, and temporary index lists, which name old ones, become
/// null; vertex properties of any kind go along, those that others hold too are replaced, empty
/// ones stay empty. Notices go out when everything is written: one for each vertex property, one
/// for the geometry with their fields, then those of the primitives.
namespace kyOptimize
{

/// Turns all primitives into one list of triangles, in the order and with the corners that
/// TriangleIterator gives them. Points and lines are dropped. There is one type, Triangles, and one
/// length afterwards.
///
/// ownVertices  true   triangle i has the vertices 3i to 3i + 2, a copy of each vertex for every
///                     corner that names it; vertices that no triangle names are dropped. A vertex
///                     id beyond the end of a property reads as zero there.
///              false  the vertices stay as they are, and triangles share them
///
/// Leaves a geometry without positions, or without any triangle, as it is: one of lines or points
/// keeps them. Linear in corners times properties.
void triangulate(const osg::GeometryPtr& geometry, bool ownVertices);

/// Makes one vertex of those that are exactly equal in the positions and in all properties that
/// have `true` below. Of equal vertices the first keeps its values and its place among those that
/// are left; a vertex that no primitive names counts like any other. Primitives name the vertices
/// that are left and stay otherwise as they are: none is dropped and their order is kept, also
/// where corners of a triangle come together.
///
/// Numbers are compared exactly: -0 and 0 are equal, and a NaN is equal to one of the same bits,
/// so that it does not keep a vertex apart from its own copies. A property that is shorter than the
/// positions reads as zero beyond its end; what a property has beyond the positions belongs to no
/// vertex and stays behind those that are left.
///
/// separateZeros  -0 and 0 are different, and floats equal that have the same bits
/// firstUseOrder  vertices stand in the order in which the primitives name them first, those that
///                none names behind; else in the order that they had
///
/// Does nothing, and tells nothing, when nothing is equal (and in order, where that is asked), and
/// with an index beyond the positions. Linear in vertices times properties: one look into a hash
/// table for each vertex.
void unifyVertices(const osg::GeometryPtr& geometry, bool compareNormals, bool compareTexCoords,
                   bool compareTexCoords1, bool compareTexCoords2, bool compareTexCoords3,
                   bool compareTexCoords4, bool compareTexCoords5, bool compareTexCoords6,
                   bool compareTexCoords7, bool separateZeros, bool compareColors,
                   bool firstUseOrder);

} // namespace kyOptimize
