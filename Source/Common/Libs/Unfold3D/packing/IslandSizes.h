#pragma once

#include "Unfold3D/mesh/ImportedMesh.h"
#include "Unfold3D/mesh/Islands.h"
#include "Unfold3D/packing/PackOptions.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The sizes of islands relative to each other.
struct IslandSizes
{
    std::vector<double> factor; ///< [island of the list] of its UVs
    std::vector<double> area; ///< [island of the list] of its triangles after that; their sum is 1
                              ///< unless all are 0
    /// What all factors are to be multiplied with for the sizes that the scaling names.
    double naturalScale = 1.0;
};

/// Measures islands in UV and in space. Linear in their triangles.
IslandSizes sizeIslands(const ImportedMesh& mesh, const Islands& islands, std::span<const Vec2> uvs,
                        std::span<const int> list, IslandScaling scaling);

} // namespace unfold3d
