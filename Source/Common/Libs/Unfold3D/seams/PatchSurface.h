#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A patch on its own, cut open along its seams, as the island that it will be.
struct PatchSurface
{
    IslandMesh mesh;           ///< triangles in the order in which they were given
    std::vector<int> vertices; ///< [vertex of mesh] the vertex of the seam mesh that it comes from
    double size = 1.0;         ///< length in the seam mesh of what has length 1 here
};

/// Takes patches out of a mesh. Keeps storage for the whole mesh, so that taking a patch costs by
/// its size.
class PatchTaker
{
public:
    explicit PatchTaker(const SeamMesh& mesh);

    /// triangles  not empty
    /// isSeam     [edge]  edges to triangles that aren't given part as well
    PatchSurface take(std::span<const int> triangles, std::span<const char> isSeam);

private:
    int neighbourAcross(int h, std::span<const char> isSeam) const;

    const SeamMesh& mesh_;
    std::vector<int> placeOf_; ///< [triangle] in the list, -1 otherwise
};

} // namespace unfold3d
