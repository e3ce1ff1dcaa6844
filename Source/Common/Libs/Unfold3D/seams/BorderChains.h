#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A way along seams that has the same two patches beside it all along.
struct BorderChain
{
    std::vector<int> vertices; ///< the first is the last where the chain is a loop
    std::vector<int> edges;    ///< [i] from vertex i to the next

    int count() const { return static_cast<int>(edges.size()); }
    bool isLoop() const { return vertices.front() == vertices.back(); }
};

/// Chains of the wanted ones among the seams, each edge in one. They end where more than two seams
/// meet, at other seams and at the border. Linear in the mesh.
///
/// isSeam, isWanted  [edge]
std::vector<BorderChain> findBorderChains(const SeamMesh& mesh, std::span<const char> isSeam,
                                          std::span<const char> isWanted);

} // namespace unfold3d
