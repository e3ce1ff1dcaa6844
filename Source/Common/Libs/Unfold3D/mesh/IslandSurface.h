#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/mesh/ImportedMesh.h"
#include "Unfold3D/mesh/Islands.h"

#include <vector>

namespace unfold3d
{

/// One island of an imported mesh on its own, and how to get back.
struct IslandSurface
{
    Obstacle obstacle = Obstacle::None; ///< CrowdedEdge or OneSided: the mesh stays empty
    IslandMesh mesh;
    std::vector<int> vertices;  ///< [vertex of mesh] its number in the imported mesh, ascending
    std::vector<int> triangles; ///< [triangle of mesh] its number in the imported mesh, ascending
    double size = 1.0;          ///< length in the imported mesh of what has length 1 here
};

/// Moves a surface to the origin and scales it to unit area. Without area it gets the scale at
/// which its stand-in shapes have unit area. Returns the length before of what has length 1 then; 1
/// for a single point, which stays what it is.
double normalise(IslandMesh& mesh);

/// Takes an island out: numbered from 0, wound consistently and normalised.
IslandSurface takeIsland(const ImportedMesh& mesh, const Islands& islands, int island,
                         const RunControl& control);

} // namespace unfold3d
