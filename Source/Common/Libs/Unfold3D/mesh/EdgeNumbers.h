#pragma once

#include "Unfold3D/mesh/ImportedMesh.h"

#include <array>
#include <vector>

namespace unfold3d
{

/// The numbers by which a caller names edges: each triangle (a, b, c), in order, is asked for
/// (c, a), (a, b), (b, c), and an edge gets the next number at its first visit, whichever way round
/// it is walked. All triangles count, bad ones too, since the caller counts them as well.
struct EdgeNumbers
{
    std::vector<std::array<int, 2>> vertices;   ///< [edge] lower id first
    std::vector<std::array<int, 3>> ofTriangle; ///< [triangle] number of (a, b), (b, c), (c, a)

    int count() const { return static_cast<int>(vertices.size()); }
};

/// Linear for meshes whose vertices have few triangles each.
EdgeNumbers numberEdges(const std::vector<Triangle>& triangles);

} // namespace unfold3d
