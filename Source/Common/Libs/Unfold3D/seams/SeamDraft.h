#pragma once

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/MeshParts.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <utility>
#include <vector>

namespace unfold3d
{

/// Seams in the making, and what the stages that make them share.
struct SeamDraft
{
    /// costs  [edge] of a seam along it, in sizes of the mesh
    SeamDraft(const SeamMesh& surface, std::vector<double> costsOfEdges)
        : mesh(surface), costs(std::move(costsOfEdges)), isSeam(costs.size(), 0),
          mayGo(costs.size(), 0), isTip(surface.positions.size(), 0),
          parts(findParts(surface, isSeam))
    {
        for (const double cost : costs)
            pathCosts.push_back(toPathCost(cost));
    }

    const SeamMesh& mesh;
    const std::vector<double> costs;
    std::vector<PathCost> pathCosts; ///< [edge] the same for searches
    std::vector<char> isSeam;        ///< [edge]
    std::vector<char> mayGo;         ///< [edge] a seam that only lowers the energy: without it the
                                     ///< surface is as open as with it
    std::vector<char> isTip;         ///< [vertex] a seam that may go was laid to get here
    MeshParts parts;                 ///< as of the last findParts(); seams that may go part nothing

    double costOf(std::span<const int> edges) const
    {
        double sum = 0.0;
        for (const int e : edges)
            sum += costs[static_cast<std::size_t>(e)];
        return sum;
    }
    /// Lays or lifts seams that may go.
    void set(std::span<const int> edges, bool isLaid)
    {
        for (const int e : edges)
            isSeam[static_cast<std::size_t>(e)] = mayGo[static_cast<std::size_t>(e)] =
                static_cast<char>(isLaid);
    }
    /// From now on all seams stay.
    void settle()
    {
        mayGo.assign(mayGo.size(), 0);
        isTip.assign(isTip.size(), 0);
    }
    /// [vertex] stands on the border or on a seam
    std::vector<char> cutVertices() const
    {
        std::vector<char> isCut = mesh.isOnBorder;
        for (int e = 0; e < mesh.edgeCount(); ++e)
            if (isSeam[static_cast<std::size_t>(e)])
                for (const int v : mesh.verticesOf(e))
                    isCut[static_cast<std::size_t>(v)] = 1;
        return isCut;
    }
};

} // namespace unfold3d
