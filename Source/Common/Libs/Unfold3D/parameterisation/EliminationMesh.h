#pragma once

#include "Unfold3D/linear/SymbolicCholesky.h"
#include "Unfold3D/parameterisation/MovablePart.h"
#include "Unfold3D/parameterisation/TriangleEnergy.h"

#include <array>
#include <span>
#include <vector>

namespace unfold3d
{

/// A triangle with all that a pass over the mesh needs, in one place.
struct FlatTriangle
{
    Triangle corners; ///< columns of the factorisation
    /// Matrix entries of the corner pairs (0,1), (1,2), (2,0).
    std::array<int, 3> entries;
    TriangleMetric metric;
};

/// The movable part of an island, renumbered in the order of elimination, so that all passes and
/// the factorisation run through memory in one direction. The areas of the rest triangles sum to 1.
///
/// The nodes of the factorisation are the vertices of the island and, behind them, further unknowns
/// that belong to no triangle.
struct EliminationMesh
{
    /// In an order of elimination that is given, or looked for when that is empty.
    EliminationMesh(const MovablePart& part, std::span<const int> oldOfNew,
                    const RunControl& control);
    /// With an analysis of the vertices' graph and more.
    EliminationMesh(const MovablePart& part, SymbolicCholesky analysis, const RunControl& control);

    int nodeCount() const { return symbolic.size(); }
    /// Values per node in the order of elimination, and back.
    std::vector<Vec2> toColumns(std::span<const Vec2> ofNodes) const;
    std::vector<Vec2> toNodes(std::span<const Vec2> ofColumns) const;

    SymbolicCholesky symbolic;
    std::vector<FlatTriangle> triangles; ///< by their lowest column
};

} // namespace unfold3d
