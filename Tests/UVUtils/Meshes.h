#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/TinyGeometry.h"

#include <vector>

using osg::Vec2f;
using tiny::Ids;
using UVs = std::vector<Vec2f>;

// Everything made here has 0 references.

/// A geometry of triangles without types and lengths.
osg::GeometryPtr geometryOf(const std::vector<osg::Pnt3f>& positions, const Ids& indices);

/// Two triangles, (0, 1, 2) and (0, 2, 3):
///
///     3 - 2
///     | / |
///     0 - 1
osg::GeometryPtr quad();

/// A row of n unit quads that share no vertex, so n islands; quad k has the vertices 4k to 4k + 3.
osg::GeometryPtr quadsApart(unsigned int n);

/// Gives a geometry one types and one lengths entry, as loaders do.
void setPrimitive(const osg::GeometryPtr& geometry, unsigned int type, unsigned int length);

/// A node with that core.
osg::NodePtr nodeOf(const osg::NodeCorePtr& core);

/// A node whose core is a shell with those surfaces, in this order.
osg::NodePtr shellOf(const std::vector<osg::GeometryPtr>& surfaces);
