#pragma once

#include "OpenSG/GeoProperty.h"
#include "UVUtils/model/Edge.h"

#include <cstdint>
#include <span>

/// The border edges of a triangle list: those that exactly one side of a triangle runs along. A
/// pair an edge, the lower id first, ascending by lower, then higher id.
///
/// A triangle that names a vertex twice counts like any other, with its edge from that vertex to
/// itself. Ids that don't fill a triangle are passed over. Linear in triangles plus highest id, but
/// for the sorting of the edges at one vertex.
FlatEdgeList borderEdges(std::span<const std::uint32_t> triangles);
FlatEdgeList borderEdges(std::span<const std::uint16_t> triangles);

/// The same for an index property of 16 or 32 bits; nothing for null and any other kind.
FlatEdgeList borderEdges(const osg::GeoIndicesPtr& indices);
