#include "Unfold3D/start/ConvexMap.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace unfold3d
{

namespace
{

/// Least distance of neighbours on the circle, as a share of the mean: nearer ones would lie on one
/// line with the next up to rounding.
constexpr double leastOutlineShare = 1e-2;
/// Rounds of refinement: the first brings the digits that the factorisation lost, the second is for
/// springs of very different stiffness, and left out when the first moved nothing by this share of
/// the circle: each round has the square of the error before it.
constexpr int refinements = 2;
constexpr double lastMove = 1e-9;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

std::vector<Vec2> placeOnCircle(const FilledDisk& disk)
{
    double total = 0.0;
    for (const double length : disk.outlineLengths)
        total += length;
    const double count = static_cast<double>(disk.outline.size());
    const double mean = total > 0.0 ? total / count : 1.0;
    std::vector<double> arcs(disk.outline.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < arcs.size(); ++i)
        sum += arcs[i] = std::max(disk.outlineLengths[i], leastOutlineShare * mean);

    std::vector<Vec2> points;
    double walked = 0.0;
    for (const double arc : arcs) {
        const double angle = 2.0 * std::numbers::pi * walked / sum;
        points.push_back({std::cos(angle), std::sin(angle)});
        walked += arc;
    }
    return points;
}

} // namespace

ConvexMapper::ConvexMapper(const FilledDisk& disk, const RunControl& control)
    : disk_(disk), symbolic_(analyse(vertexGraph(disk.triangles, disk.vertexCount), control)),
      isOutline_(at(disk.vertexCount), 0), outlinePosition_(at(disk.vertexCount)),
      stiffness_(symbolic_.entryRows.size())
{
    const std::vector<Vec2> circle = placeOnCircle(disk);
    for (std::size_t i = 0; i < circle.size(); ++i) {
        const std::size_t column = at(symbolic_.newOfOld[at(disk.outline[i])]);
        isOutline_[column] = 1;
        outlinePosition_[column] = circle[i];
    }
}

void ConvexMapper::setStiffness(const SpringNet& springs)
{
    std::fill(stiffness_.begin(), stiffness_.end(), 0.0);
    for (std::size_t t = 0; t < springs.ofCorners.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i) {
            const Triangle& corner = disk_.triangles[t];
            const int a = symbolic_.newOfOld[at(corner[(i + 1) % 3])];
            const int b = symbolic_.newOfOld[at(corner[(i + 2) % 3])];
            stiffness_[at(symbolic_.entryOf(a, b))] += springs.ofCorners[t][i];
        }
    if (springs.least)
        for (double& spring : stiffness_)
            spring = std::max(spring, *springs.least);
    if (springs.factors.empty())
        return;
    const auto factorOf = [&](std::size_t column) {
        return springs.factors[at(symbolic_.oldOfNew[column])];
    };
    for (std::size_t column = 0; column < isOutline_.size(); ++column)
        for (int e = symbolic_.columnOffsets[column]; e < symbolic_.columnOffsets[column + 1]; ++e)
            stiffness_[at(e)] *= factorOf(column) * factorOf(at(symbolic_.entryRows[at(e)]));
}

BlockMatrix ConvexMapper::assembled() const
{
    BlockMatrix matrix(symbolic_, 1);
    for (std::size_t column = 0; column < isOutline_.size(); ++column)
        for (int e = symbolic_.columnOffsets[column]; e < symbolic_.columnOffsets[column + 1]; ++e)
        {
            const std::size_t row = at(symbolic_.entryRows[at(e)]);
            const double spring = stiffness_[at(e)];
            matrix.diagonal[column] += spring;
            matrix.diagonal[row] += spring;
            if (!isOutline_[column] && !isOutline_[row])
                matrix.lower[at(e)] = -spring;
        }
    for (std::size_t column = 0; column < isOutline_.size(); ++column)
        if (isOutline_[column])
            matrix.diagonal[column] = 1.0;
    return matrix;
}

std::vector<Vec2> ConvexMapper::imbalance(std::span<const Vec2> uv) const
{
    std::vector<Vec2> force(uv.size());
    for (std::size_t column = 0; column < uv.size(); ++column)
        for (int e = symbolic_.columnOffsets[column]; e < symbolic_.columnOffsets[column + 1]; ++e)
        {
            const std::size_t row = at(symbolic_.entryRows[at(e)]);
            const Vec2 pull = stiffness_[at(e)] * (uv[row] - uv[column]);
            force[column] += pull;
            force[row] -= pull;
        }
    for (std::size_t column = 0; column < uv.size(); ++column)
        if (isOutline_[column])
            force[column] = {};
    return force;
}

std::optional<std::vector<Vec2>> ConvexMapper::map(const SpringNet& springs,
                                                   const RunControl& control)
{
    setStiffness(springs);
    control.checkpoint();
    SparseCholesky cholesky(symbolic_); // large; not kept from map to map
    if (cholesky.factorise(assembled(), control) > 0)
        return std::nullopt;
    // All inner vertices start at the centre; the first round is the solution itself.
    std::vector<Vec2> uv = outlinePosition_;
    std::vector<double> x(uv.size());
    std::vector<double> y(uv.size());
    for (int round = 0; round <= refinements; ++round) {
        const std::vector<Vec2> force = imbalance(uv);
        for (std::size_t i = 0; i < uv.size(); ++i) {
            x[i] = force[i].x;
            y[i] = force[i].y;
        }
        cholesky.solve(x);
        control.checkpoint();
        cholesky.solve(y);
        double farthest = 0.0;
        for (std::size_t i = 0; i < uv.size(); ++i) {
            uv[i] += {x[i], y[i]};
            farthest = std::max({farthest, std::abs(x[i]), std::abs(y[i])});
        }
        control.checkpoint();
        if (farthest < lastMove)
            break;
    }
    std::vector<Vec2> ofVertices(uv.size());
    for (std::size_t v = 0; v < uv.size(); ++v)
        ofVertices[v] = uv[at(symbolic_.newOfOld[v])];
    return ofVertices;
}

} // namespace unfold3d
