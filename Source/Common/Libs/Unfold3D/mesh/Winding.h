#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/mesh/HalfEdges.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Which triangles to turn round so that neighbours face one side, as far as that can be.
struct Sides
{
    std::vector<char> isTurned; ///< [triangle]
    bool oneSided = false;      ///< somewhere no choice lets all neighbours face one side
};

/// In each part of the list that hangs together through edges of two triangles the larger number of
/// triangles stays as it is; in a tie, the first one does. Linear.
Sides findSides(std::span<const Triangle> triangles, const HalfEdges& edges);

/// Turns triangles round so that neighbours face one side. In each part of the list that hangs
/// together through edges the larger number of triangles stays as it is; in a tie, the first one
/// does.
///
/// Returns None, OneSided or CrowdedEdge; with the latter two the triangles are left as they were.
/// Linear.
Obstacle windConsistently(std::vector<Triangle>& triangles, int vertexCount);

} // namespace unfold3d
