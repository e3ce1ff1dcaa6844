#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <array>
#include <span>
#include <utility>
#include <vector>

namespace unfold3d
{

/// Patches while their borders are moved.
class MovableBorders
{
public:
    /// isSeam  [edge]  changes with the borders, and not otherwise
    /// Both are kept by reference.
    MovableBorders(const SeamMesh& mesh, std::vector<char>& isSeam);

    /// The patches on both sides of an edge.
    std::array<int, 2> patchesOf(int edge) const;
    /// How many seam edges meet at a vertex.
    int seamsAt(int vertex) const { return seamsAt_[static_cast<std::size_t>(vertex)]; }

    /// Puts a new way in the place of an old one with the same ends, both lists of edges: what lies
    /// between them goes to the other patch. When a patch would give or get too much at a time,
    /// nothing changes. Costs by the length of the ways and by what lies between them.
    void move(std::span<const int> from, std::span<const int> to);

private:
    using Moves = std::vector<std::pair<int, int>>; ///< triangles and the patches they were in

    void countSeam(int edge, int by);
    void mark(std::span<const int> edges, bool isSeam);
    void give(int triangle, int patch);
    bool movePockets(std::span<const int> from, Moves& moves);
    bool movePocket(int edge, Moves& moves);
    std::vector<int> pocketAt(int triangle, std::size_t most);

    const SeamMesh& mesh_;
    std::vector<char>& isSeam_;
    std::vector<int> patchOf_;    ///< [triangle]
    std::vector<int> counts_;     ///< [patch] triangles
    std::vector<int> seamsAt_;    ///< [vertex]
    std::vector<char> isDropped_; ///< [edge] of the old way; cleared after use
    std::vector<char> isTaken_;   ///< [triangle] cleared after use
};

} // namespace unfold3d
