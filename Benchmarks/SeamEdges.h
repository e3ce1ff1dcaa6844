#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/model/Edge.h"

namespace bench
{

/// Edges to cut a sheet along (sheetPlain, sheetShell): rows of edges that run along whole surfaces
/// from border to border, ten cells apart, on every surface one after the other. Ids are those of
/// the node as it is now: on a sheet that was cut along them, those of one side.
FlatEdgeList seamEdges(const osg::NodePtr& sheet, unsigned int edgeCount);

/// Makes edges the edge selection of a node's core.
void selectEdges(const osg::NodePtr& node, const FlatEdgeList& edges);

/// The plainest pass over a triangle list: is there a flag at its corners? This is what the cost of
/// a seam that touches few triangles is set against.
unsigned int countFlaggedTriangles(const std::vector<unsigned int>& triangles,
                                   const std::vector<char>& isFlagged);

} // namespace bench
