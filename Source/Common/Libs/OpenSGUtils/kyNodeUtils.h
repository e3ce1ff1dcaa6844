#pragma once

#include "OpenSG/Node.h"

#include <vector>

/// Questions about nodes and what is below them.
namespace kyNodeUtils
{

/// Appends the nodes of the geometry that can be seen at or below some nodes, in the order of
/// `nodes` and, below each, parents before children.
///
/// A plain geometry gives its node; a shell, which has no geometry of its own, gives those of its
/// surfaces that are on a shown side. A hidden node (a traversal mask of 0) hides all that is
/// below. Null nodes give nothing, and a node below two of the given ones comes twice.
///
/// shownSides  bits of osg::SurfaceBase::Side
void getVisibleGeometryNodes(const std::vector<osg::NodePtr>& nodes, std::vector<osg::NodePtr>& out,
                             unsigned int shownSides);

} // namespace kyNodeUtils
