#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/OffsetArray.h"

#include <vector>

namespace unfold3d
{

/// An island closed up to a disk whose outline is a simple polygon, so that it can be mapped to a
/// convex polygon.
///
/// The triangles of the island come first, with their vertices; behind them stand the triangles
/// that fill the holes, and a collar around the island where its outer border touches itself. The
/// edges form a simple graph: no two join the same vertices.
struct FilledDisk
{
    int vertexCount = 0;
    std::vector<Triangle> triangles;
    std::vector<int> outline;           ///< counter-clockwise, no vertex twice
    std::vector<double> outlineLengths; ///< [i] length in space from outline[i] to the next
};

/// Fills all loops but the outer one: the longest in space, and of equally long ones the one whose
/// middle comes first by x, then y, then z. Linear.
FilledDisk fillToDisk(const IslandMesh& mesh, const OffsetArray<int>& loops);

} // namespace unfold3d
