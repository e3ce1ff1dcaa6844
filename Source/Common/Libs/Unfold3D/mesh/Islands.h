#pragma once

#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/mesh/ImportedMesh.h"

#include <vector>

namespace unfold3d
{

/// The islands of a mesh: triangles that hang together through shared vertices. They are numbered
/// from 0 in the order of their lowest vertex.
struct Islands
{
    std::vector<int> ofVertex;   ///< [vertex]   noIsland where no triangle uses the vertex
    std::vector<int> ofTriangle; ///< [triangle] a left-out triangle goes with its first corner
    std::vector<int> anchor;     ///< [vertex]   itself; for a vertex that only left-out triangles
                                 ///<            use, the vertex whose place it takes
    OffsetArray<int> vertices;   ///< [island]   ascending
    OffsetArray<int> triangles;  ///< [island]   ascending, without the left-out ones; empty for an
                                 ///<            island that has no others

    static constexpr int noIsland = -1;

    int count() const { return vertices.size(); }
};

/// Finds the islands. A triangle that is left out joins nothing, except that a vertex which only
/// such triangles use goes to the island of a neighbour in them. Near linear.
Islands findIslands(const ImportedMesh& mesh);

} // namespace unfold3d
