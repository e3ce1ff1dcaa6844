#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/Edge.h"

#include <span>
#include <vector>

/// One geometry that really takes part in the work on a node.
struct ActiveSurface
{
    osg::NodePtr node;
    osg::GeometryPtr geometry;
    unsigned int childIndex = 0;  ///< among all children of a shell's node; 0 for a plain geometry
    unsigned int firstId = 0;     ///< where its vertices begin in the ids that the application sees
    unsigned int vertexCount = 0; ///< 0 without positions
};

/// The surfaces of a node that take part, in child order. This is the one walk over surfaces:
/// whatever runs over the ids of a shell runs over this list, so that all agree on where the
/// vertices of a surface begin.
///
/// A plain geometry gives itself, unchecked. A shell gives those children whose core is a usable
/// geometry and that are visible on the sides that the application shows. A node without a
/// geometry core gives nothing.
std::vector<ActiveSurface> activeSurfaces(const osg::NodePtr& node);

/// The vertices of all of them together.
inline unsigned int vertexCountOf(std::span<const ActiveSurface> surfaces)
{
    return surfaces.empty() ? 0 : surfaces.back().firstId + surfaces.back().vertexCount;
}

/// The active surfaces of a node that can be read without further checks: a plain geometry must
/// pass kyGeoUtils::checkGeometryCore, as the surfaces of a shell have done before they became
/// active.
std::vector<ActiveSurface> usableSurfaces(const osg::NodePtr& node);

/// The surface that both ends of an edge are vertices of; null for an edge between two surfaces and
/// for one beyond the last. One bisection.
const ActiveSurface* surfaceOfEdge(const Edge& edge, std::span<const ActiveSurface> surfaces);
