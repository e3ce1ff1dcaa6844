#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/mesh/HalfEdges.h"

namespace unfold3d
{

/// The border of an island as it will run in the plane.
///
///   loops  [loop]  half-edges in walking order, the island on their left. A loop bounds one piece
///                  of the plane's rest: the outside or a hole.
///
/// Where fans of triangles meet in one vertex only, a loop goes on from one fan to its neighbour
/// around the vertex. So a loop may pass a vertex more than once:
///
///       . --- .       . --- .
///         \ 1 /       \ 2 /         one loop around both fans, not two
///          . ---- v ---- .
struct BorderLoops
{
    Obstacle obstacle =
        Obstacle::None; ///< Closed, Handle or TouchesItself; else it can be embedded
    OffsetArray<int> loops;
};

/// Finds the loops, and a way to lay the fans around each vertex that fits into the plane. Linear,
/// but for vertices with three fans and more, each of which may cost a walk along the border.
BorderLoops findBorderLoops(const IslandMesh& mesh, const HalfEdges& edges);

} // namespace unfold3d
