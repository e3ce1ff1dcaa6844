#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Obstacle.h"

#include <vector>

namespace unfold3d
{

/// Turns triangles round so that neighbours face one side. In each part of the list that hangs
/// together through edges the larger number of triangles stays as it is; in a tie, the first one
/// does.
///
/// Returns None, OneSided or CrowdedEdge; with the latter two the triangles are left as they were.
/// Linear.
Obstacle windConsistently(std::vector<Triangle>& triangles, int vertexCount);

} // namespace unfold3d
