#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/OffsetArray.h"

#include <vector>

namespace unfold3d
{

/// An island closed up to a disk whose outline is a simple polygon, so that it can be mapped to a
/// convex polygon.
///
/// Triangles and vertices of the island come first, then those that fill its holes, then those of a
/// collar around the island where its outer border touches itself. The edges form a simple graph:
/// no two join the same vertices.
struct FilledDisk
{
    int vertexCount = 0;
    std::vector<Triangle> triangles;
    std::vector<int> outline;           ///< counter-clockwise, no vertex twice
    std::vector<double> outlineLengths; ///< [i] length in space from outline[i] to the next

    IslandMesh filled; ///< the island and what fills its holes, without the collar

    bool hasHoles(const IslandMesh& island) const
    {
        return filled.triangles.size() > island.triangles.size();
    }
};

/// Fills all loops but the outer one: the longest in space, and of equally long ones the one whose
/// middle comes first by x, then y, then z. Linear.
FilledDisk fillToDisk(const IslandMesh& mesh, const OffsetArray<int>& loops);

} // namespace unfold3d
