#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/kyUVTypes.h"

struct TopologyOpOutData;

/// Cuts one geometry along edges: the fans of triangles that the edges part at a vertex get
/// vertices of their own, with copies of all vertex properties, and the triangles name them.
/// Temporary lists and constraints that name a vertex name all its copies then.
///
/// edges      [count]  pairs of vertices, in any order, repeats allowed. Those that are no edge of
///            the mesh have no effect, but that a vertex whose first pair is none is not split; an
///            id left over at the end and pairs beyond the vertices are ignored. The list may be
///            one of the geometry's own
/// moveApart  shift the UVs in `set` of the sides of a vertex apart, by about 1.2e-5, each towards
///            its triangles; without UVs there the geometry is cut all the same
/// out        receives the record, the identity where nothing is to be split; may be null
///
/// New vertices follow the old ones, ascending by the vertex that they come from. The first side of
/// a vertex, counted from its first pair, keeps the old one. Without positions, indices, or edges
/// nothing happens and nothing is recorded. Indices are below the number of positions.
///
/// One pass over the triangles, which looks up a flag a corner; what comes on top follows the
/// number of edges, but for what the record clones, and the one of kyGeoIndicesStore.
void doCutAlongEdges(const osg::GeometryPtr& geometry, const unsigned int* edges,
                     unsigned int count, bool moveApart, kyUVTypes::UVSet set,
                     TopologyOpOutData* out);
