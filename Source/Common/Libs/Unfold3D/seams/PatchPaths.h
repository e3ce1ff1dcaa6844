#pragma once

#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/PatchSurface.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Cheapest paths over the inner edges of a patch that was taken out of a mesh, so that both sides
/// of a seam are apart. Paths don't go on from vertices on the border. Ties go to the lower vertex.
class PatchPaths
{
public:
    /// triangles  those of the patch in the mesh, as they were given to take it
    /// costs      [edge of the mesh]
    PatchPaths(const SeamMesh& mesh, const PatchSurface& patch, std::span<const int> triangles,
               std::span<const PathCost> costs, std::span<const char> isSeam);

    bool isOnBorder(int vertex) const { return isOnBorder_[static_cast<std::size_t>(vertex)] != 0; }

    /// Edges of the mesh on the cheapest way from some vertices of the patch to the first for which
    /// isGoal [vertex] is set and that is none of them, which gets into `end`; -1 and no edges when
    /// there is none. Throws Stopped.
    std::vector<int> wayTo(std::span<const int> sources, std::span<const char> isGoal,
                           const RunControl& control, int& end) const;

private:
    struct Step
    {
        int vertex;
        int edge; ///< of the mesh
    };

    std::span<const PathCost> costs_;
    std::vector<std::vector<Step>> steps_; ///< [vertex]
    std::vector<char> isOnBorder_;         ///< [vertex]
};

} // namespace unfold3d
