#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/repair/kyTopologyRepair.h"

#include <span>
#include <vector>

/// The copies that part groups of triangles where they meet in a vertex.
struct VertexCopies
{
    std::vector<unsigned int> sourceIds; ///< [copy] the vertex
    std::vector<unsigned int> newIds;    ///< [copy] ascending, from the old count on
    std::vector<unsigned int> groups;    ///< [copy] whose triangles get it; ascending
    unsigned int oldCount = 0;           ///< of vertices
    unsigned int newCount = 0;
};

/// Numbers the copies: the first group that has a vertex keeps it, each further one gets a copy.
///
/// vertices  in any order, with repeats; those from oldCount on are passed over
///
/// Linear in the vertices of all groups.
VertexCopies numberCopies(std::span<const kyTopologyRepair::TriangleGroup> groups,
                          std::span<const unsigned int> vertices, unsigned int oldCount);

/// Has the triangles of the groups name the copies. Triangles beyond the index list are passed
/// over. Sends the notices. Linear in the triangles of the groups that got copies.
void nameCopies(const osg::GeometryPtr& geometry,
                std::span<const kyTopologyRepair::TriangleGroup> groups,
                const VertexCopies& copies);
