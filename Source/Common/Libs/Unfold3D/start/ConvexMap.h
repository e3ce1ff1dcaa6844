#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/start/FilledDisk.h"

#include <optional>
#include <span>
#include <vector>

namespace unfold3d
{

/// Maps of one disk into the unit circle that hold each inner vertex in the balance of springs
/// along its edges (Tutte 1963, Floater 1997). With positive springs such a map is an embedding, up
/// to rounding. The outline runs round the circle by its lengths.
///
/// The graph is analysed once for all maps.
class ConvexMapper
{
public:
    explicit ConvexMapper(const FilledDisk& disk);

    /// springs  [triangle][corner]  stiffness that the triangle adds to the edge opposite a corner
    /// Springs that come out negative, as those of obtuse triangles do, are taken as they are with
    /// `least` empty, and raised to it otherwise. Nothing is returned when the springs have no
    /// balance.
    std::optional<std::vector<Vec2>> map(std::span<const std::array<double, 3>> springs,
                                         std::optional<double> least, const RunControl& control);

private:
    void assemble(std::span<const std::array<double, 3>> springs, std::optional<double> least);
    /// What is missing to the balance of each inner vertex, [column].
    std::vector<Vec2> imbalance(std::span<const Vec2> uv) const;

    const FilledDisk& disk_;
    SymbolicCholesky symbolic_;
    std::vector<char> isOutline_;       ///< [column]
    std::vector<Vec2> outlinePosition_; ///< [column] zero for inner vertices
    std::vector<double> stiffness_;     ///< [entry] of every edge
    BlockMatrix matrix_;
    SparseCholesky cholesky_;
};

} // namespace unfold3d
