#pragma once

#include "OpenSG/GeoProperty.h"
#include "UVUtils/compactmesh/VertexGroups.h"
#include "UVUtils/editing/BorderVertices.h"
#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/Edge.h"

#include <span>
#include <vector>

// Where the edges that bear on a sew lie. Edges in one place have one key: the edge between the
// representatives of their ends. All ids in keys and records are places of border vertices.

/// An edge of a triangle that joins two border vertices and is no border itself.
struct InteriorEdge
{
    Edge key;
    Edge edge; ///< vertex ids
};

/// One record for each border edge, in their order: the end whose representative is the lower id
/// of the key comes first. `edges` holds two vertex ids each.
std::vector<MergeRecord> makeBorderRecords(std::span<const unsigned int> edges,
                                           const BorderVertices& vertices,
                                           std::span<const unsigned int> representatives);

/// In the order of the triangles; one that two triangles share stands twice. One pass over the
/// corners with a flag looked up for each; what comes on top is for triangles with a whole edge
/// between border vertices.
std::vector<InteriorEdge> findInteriorEdges(std::span<const unsigned int> triangles,
                                            std::span<const MergeRecord> borders,
                                            const BorderVertices& vertices,
                                            std::span<const unsigned int> representatives);

/// What lies on each key.
struct SewKeys
{
    std::vector<Edge> keys;                    ///< [number]
    std::vector<unsigned int> numberOfSewEdge; ///< [sew edge] that of its key
    Buckets<unsigned int> bordersOfKey;        ///< [number] border edges on it, in their order
    Buckets<Edge> interiorsOfKey;              ///< [number] interior edges on it, in vertex ids
};

SewKeys numberKeys(std::span<const MergeRecord> borders, std::span<const MergeRecord> sewn,
                   std::span<const InteriorEdge> interiors);
