#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// The parts of a surface that hang together, in the order of their lowest vertex, and their sizes
/// by which all that happens on them is measured.
struct MeshParts
{
    std::vector<int> ofVertex;     ///< [vertex]
    std::vector<double> areas;     ///< [part] above 0 even for a part without area
    std::vector<double> diagonals; ///< [part] of its box; above 0

    int count() const { return static_cast<int>(areas.size()); }
    int ofEdge(const SeamMesh& mesh, int edge) const
    {
        return ofVertex[static_cast<std::size_t>(mesh.verticesOf(edge)[0])];
    }
};

/// Near linear.
MeshParts findParts(const SeamMesh& mesh);

} // namespace unfold3d
