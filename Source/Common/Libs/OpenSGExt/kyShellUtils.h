#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"

#include <functional>

/// Shells and their surfaces.
namespace kyShellUtils
{

/// Is this geometry a shell? It then has no mesh of its own, and its surfaces are the geometry
/// cores of its node's children. False for null.
bool isShell(const osg::GeometryPtr& geometry);

/// Does a surface take part in the work on its shell? Not when its node is hidden (a traversal
/// mask of 0), when it covers none of the shown sides, or when either is null.
///
/// shownSides  bits of osg::SurfaceBase::Side. A surface that is no SurfaceBase covers side A.
bool isVisibleShellComponent(const osg::NodePtr& child, const osg::GeometryPtr& surface,
                             unsigned int shownSides);

/// Does it really take part: is it visible, and a mesh that can be worked on (checkGeometryCore of
/// kyGeoUtils, indices included)?
bool isActiveShellComponent(const osg::NodePtr& child, const osg::GeometryPtr& surface,
                            unsigned int shownSides);

/// Calls a function for each shell that a geometry is a surface of, with the shell's node and its
/// core: in the order in which the geometry's nodes took it, each shell node once.
void forShellsOfComponent(
    const osg::GeometryPtr& surface,
    const std::function<void(const osg::NodePtr&, const osg::GeometryPtr&)>& function);

} // namespace kyShellUtils
