#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/start/FilledDisk.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace unfold3d
{

/// Springs along the edges of a disk.
///
///   ofCorners  [triangle][corner]  stiffness that a triangle adds to the edge opposite a corner
///   least      sums that come out lower, such as the negative ones of obtuse triangles, are
///              raised to this; nothing takes them as they are
///   factors    [vertex]  each edge is stiffened by the factors of both its ends; may be empty
struct SpringNet
{
    std::span<const std::array<double, 3>> ofCorners;
    std::optional<double> least;
    std::span<const double> factors;
};

/// Maps of one disk into the unit circle that hold each inner vertex in the balance of springs
/// along its edges (Tutte 1963, Floater 1997). With positive springs such a map is an embedding, up
/// to rounding. The outline runs round the circle by its lengths.
///
/// The graph is analysed once for all maps. Each map costs a sparse factorisation.
class ConvexMapper
{
public:
    ConvexMapper(const FilledDisk& disk, const RunControl& control);

    /// Returns [vertex of the disk], or nothing when the springs have no balance. Throws Stopped.
    std::optional<std::vector<Vec2>> map(const SpringNet& springs, const RunControl& control);

    /// The order in which the vertices of the disk are eliminated.
    std::span<const int> eliminationOrder() const { return symbolic_.oldOfNew; }

private:
    void setStiffness(const SpringNet& springs);
    BlockMatrix assembled() const;
    /// What is missing to the balance of each inner vertex, [column].
    std::vector<Vec2> imbalance(std::span<const Vec2> uv) const;

    const FilledDisk& disk_;
    SymbolicCholesky symbolic_;
    std::vector<char> isOutline_;       ///< [column]
    std::vector<Vec2> outlinePosition_; ///< [column] zero for inner vertices
    std::vector<double> stiffness_;     ///< [entry] of every edge
};

} // namespace unfold3d
