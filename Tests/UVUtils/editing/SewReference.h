#pragma once

#include "UVUtils/Meshes.h"

/// Which vertices a sew makes one, found in the plainest way: ordered sets and maps, and a search
/// through all vertices for each merge.
///
/// allEdges  all border edges of the geometry, sewEdges some of them
/// slot      of the UVs that are sewn
///
/// Returns [vertex] the lowest vertex of those that it becomes one with.
Ids sewPlainly(const osg::GeometryPtr& geometry, unsigned slot, const Ids& allEdges,
               const Ids& sewEdges, bool matchUVs);

/// The edges of a triangle list that occur once, in the ids of the list, ascending.
Ids bordersPlainly(const Ids& triangles);
