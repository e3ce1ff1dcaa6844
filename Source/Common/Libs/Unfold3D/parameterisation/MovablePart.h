#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The part of an island that can change when some of its vertices are fixed.
struct MovablePart
{
    /// Both are kept by reference. isFixed [vertex] may be empty: then everything moves.
    MovablePart(const IslandMesh& island, std::span<const char> isFixedVertex);

    bool isWhole() const { return isFixed.empty(); }

    const IslandMesh& mesh;
    std::span<const char> isFixed;
    std::vector<int> triangles;    ///< ascending, those with a vertex that moves
    std::vector<Triangle> corners; ///< [position in triangles]
};

} // namespace unfold3d
