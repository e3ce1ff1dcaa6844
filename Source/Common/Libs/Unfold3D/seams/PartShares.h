#pragma once

#include "Unfold3D/seams/CoarseMesh.h"
#include "Unfold3D/seams/MeshParts.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <vector>

namespace unfold3d
{

/// How much of each part the vertices of a coarse mesh stand for.
struct PartShares
{
    /// One vertex and one of the parts that what went to it belongs to.
    struct Share
    {
        int vertex; ///< of the coarse mesh
        int part;
        double area;
    };

    std::vector<Share> shares; ///< by vertex
};

/// Linear.
PartShares findPartShares(const SeamMesh& mesh, const CoarseMesh& coarse, const MeshParts& parts);

} // namespace unfold3d
