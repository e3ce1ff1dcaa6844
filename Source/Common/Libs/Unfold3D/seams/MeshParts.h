#pragma once

#include "Unfold3D/seams/Patches.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The patches into which seams cut a surface, as seams/Patches.h numbers them, and their sizes, by
/// which all that happens on them is measured.
struct MeshParts
{
    std::vector<int> ofTriangle; ///< [triangle]
    std::vector<int> ofVertex;   ///< [vertex] one of its parts where it stands on a seam
    std::vector<double> areas;   ///< [part] above 0 even for a part without area
    std::vector<double> sizes;   ///< [part] as seams/SurfaceExtent.h measures; above 0

    int count() const { return static_cast<int>(areas.size()); }
    /// Of an edge that has one part on both sides.
    int ofEdge(const SeamMesh& mesh, int edge) const
    {
        return ofTriangle[static_cast<std::size_t>(mesh.trianglesOf(edge)[0])];
    }
};

/// isSeam  [edge]
/// Near linear.
MeshParts findParts(const SeamMesh& mesh, std::span<const char> isSeam);

} // namespace unfold3d
