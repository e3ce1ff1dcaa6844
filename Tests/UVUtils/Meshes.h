#pragma once

#include "OpenSG/Node.h"
#include "OpenSG/TinyGeometry.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

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

/// A quad of which an index is out of range.
osg::GeometryPtr brokenQuad();

/// A row of n unit quads that share no vertex, so n islands; quad k has the vertices 4k to 4k + 3.
osg::GeometryPtr quadsApart(unsigned int n);

/// Gives a geometry types and lengths, as loaders do, or none where a list is empty.
void setPrimitives(osg::Geometry& geometry, const Ids& types, const Ids& lengths);

/// A node with that core.
osg::NodePtr nodeOf(const osg::NodeCorePtr& core);

/// A node whose core is a shell with those surfaces, in this order.
osg::NodePtr shellOf(const std::vector<osg::GeometryPtr>& surfaces);

/// A shell of two quads that meet along an edge and have no UVs:
///
///     3 - 2 7 - 6
///     | / | | / |
///     0 - 1 4 - 5
osg::NodePtr twoSurfaceShell();

/// The geometry core of a node, and of one of its children.
osg::GeometryPtr coreOf(const osg::NodePtr& node);
osg::GeometryPtr surfaceOf(const osg::NodePtr& shell, unsigned int child);

/// All geometries of a node: its core, and those of its children, active or not.
std::vector<osg::GeometryPtr> geometriesOf(const osg::NodePtr& node);

/// The triangles of all active surfaces in the ids of the node, in surface order.
Ids trianglesOf(const osg::NodePtr& node);

/// Plain geometries are worked on as they stand for as long as it lives.
class WithoutCompactMesh
{
public:
    WithoutCompactMesh() { kyUVUtils::setUseCompactMesh(false); }
    ~WithoutCompactMesh() { kyUVUtils::setUseCompactMesh(true); }
    WithoutCompactMesh(const WithoutCompactMesh&) = delete;
    WithoutCompactMesh& operator=(const WithoutCompactMesh&) = delete;
};
