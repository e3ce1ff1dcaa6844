#pragma once

#include "OpenSG/GeoProperty.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/Vector.h"

#include <vector>

using UVs = std::vector<osg::Vec2f>;
using Ids = std::vector<unsigned int>;

/// A geometry of triangles without types and lengths, with 0 references.
osg::GeometryPtr geometryOf(std::vector<osg::Pnt3f> positions, Ids indices);

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

void setUVs(const osg::GeometryPtr& geometry, unsigned int slot, UVs uvs);

/// A node with that core, with 0 references.
osg::NodePtr nodeOf(const osg::NodeCorePtr& core);

/// A node whose core is a shell with those surfaces, in this order.
osg::NodePtr shellOf(const std::vector<osg::GeometryPtr>& surfaces);
