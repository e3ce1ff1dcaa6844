#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"

#include <span>

class CompactShellMesh;

// The edges that a cut or a sew was asked for, on their way to the geometries that have them: two
// F ids an edge. Pairs keep their order, and their ends too; an id left over at the end drops out.

/// A copy of one of the lists of a geometry, since the operation rewrites it. Empty for a null one.
FlatEdgeList copyOfList(const osg::GeometryPtr& geometry, kyUVTypes::TempIndexList number);

/// The pairs between two vertices of one surface. One between two surfaces is no edge of either,
/// and would tear all pairs behind it apart when the ids are dealt out.
FlatEdgeList pairsOnSurfaces(std::span<const unsigned int> pairs,
                             std::span<const ActiveSurface> surfaces);

/// The pairs in ids of a mesh. Those with a vertex that the mesh does not have drop out, since a
/// list can be older than the mesh.
FlatEdgeList toCompactIds(const CompactShellMesh& mesh, std::span<const unsigned int> pairs);
