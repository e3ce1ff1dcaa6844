#include "Unfold3D/parameterisation/StepSystem.h"

#include "Unfold3D/parameterisation/DistortionEnergy.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

/// Added to the diagonal of the Hessian, whose entries are about 4: rigid motions cost nothing and
/// would leave empty pivots.
constexpr double regularisation = 1e-9;

/// Share of the gradient that a step may leave over. The next one sees to it, unless the energy is
/// quadratic and one step is all it takes.
constexpr double plainTolerance = 0.03;
constexpr double fineTolerance = 1e-10;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

StepSystem::StepSystem(EliminationMesh mesh)
    : mesh_(std::move(mesh)), hessian_(mesh_.symbolic, 2), cholesky_(mesh_.symbolic),
      gradient_(at(mesh_.nodeCount())), direction_(gradient_.size())
{}

bool StepSystem::covers(const Spring& spring) const
{
    const auto column = [&](int i) { return columnOfNode()[at(spring.nodes[at(i)])]; };
    for (int i = 0; i < spring.count; ++i)
        for (int j = i + 1; j < spring.count; ++j)
            if (mesh_.symbolic.entryOf(column(i), column(j)) == SymbolicCholesky::noEntry)
                return false;
    return true;
}

void StepSystem::set(std::span<const Vec2> uv, const LayoutEnergy& energy, Curvature kind)
{
    held_.clear();
    tolerance_ = energy.isConformal ? fineTolerance : plainTolerance;
    hessian_.setZero();
    std::fill(gradient_.begin(), gradient_.end(), Vec2{});
    addDerivatives(mesh_, uv, energy, kind, gradient_, hessian_);
}

void StepSystem::add(const Spring& spring)
{
    for (int i = 0; i < spring.count; ++i) {
        const int column = columnOfNode()[at(spring.nodes[at(i)])];
        const Vec2 direction = spring.directions[at(i)];
        gradient_[at(column)] += spring.slope * direction;
        addProduct(hessian_.diagonal.data() + 4 * at(column), spring.curvature, direction,
                   direction);
        for (int j = 0; j < i; ++j) {
            const int other = columnOfNode()[at(spring.nodes[at(j)])];
            const Vec2 otherDirection = spring.directions[at(j)];
            double* const block =
                hessian_.lower.data() + 4 * at(mesh_.symbolic.entryOf(column, other));
            if (column > other)
                addProduct(block, spring.curvature, direction, otherDirection);
            else
                addProduct(block, spring.curvature, otherDirection, direction);
        }
    }
}

/// The number in a block of two different columns, whichever of them comes first.
double& StepSystem::entry(int rowColumn, std::size_t row, int column, std::size_t component)
{
    const std::size_t block = 4 * at(mesh_.symbolic.entryOf(rowColumn, column));
    return hessian_.lower[block + (rowColumn > column ? 2 * row + component : 2 * component + row)];
}

void StepSystem::findHeld(const StraightLines& lines)
{
    std::vector<int> heldOfColumn(at(mesh_.nodeCount()), -1); // the first of a column
    for (int l = 0; l < lines.count(); ++l)
        for (const int vertex : lines.lines()[at(l)].vertices) {
            const int column = columnOfNode()[at(vertex)];
            held_.push_back({column,
                             lines.lines()[at(l)].axis == Axis::U ? 0U : 1U,
                             columnOfNode()[at(lines.nodeOf(l))],
                             {}});
            if (heldOfColumn[at(column)] < 0)
                heldOfColumn[at(column)] = static_cast<int>(held_.size()) - 1;
        }
    const SymbolicCholesky& symbolic = mesh_.symbolic;
    const auto addNeighbour = [&](int column, int neighbour) {
        if (heldOfColumn[at(column)] >= 0)
            held_[at(heldOfColumn[at(column)])].neighbours.push_back(neighbour);
    };
    for (int column = 0; column < symbolic.size(); ++column)
        for (int e = symbolic.columnOffsets[at(column)]; e < symbolic.columnOffsets[at(column) + 1];
             ++e)
        {
            addNeighbour(column, symbolic.entryRows[at(e)]);
            addNeighbour(symbolic.entryRows[at(e)], column);
        }
    for (Held& held : held_) {
        if (held.neighbours.empty())
            held.neighbours = held_[at(heldOfColumn[at(held.column)])].neighbours;
    }
}

void StepSystem::hold(const Held& held)
{
    const std::size_t k = held.component;
    const std::size_t free = 1 - k;
    const int line = held.lineColumn;
    double* const own = hessian_.diagonal.data() + 4 * at(held.column);
    double& lineDiagonal = hessian_.diagonal[4 * at(line)];

    // Row and column of the coordinate are added to those of the line, then emptied.
    for (const int other : held.neighbours) {
        for (std::size_t c = 0; c < 2; ++c) {
            double& value = entry(held.column, k, other, c);
            if (other != line)
                entry(line, 0, other, c) += value;
            else if (c == 0)
                lineDiagonal += 2.0 * value;
            value = 0.0;
        }
    }
    lineDiagonal += own[3 * k];
    entry(line, 0, held.column, free) += own[1];
    own[1] = own[2] = 0.0;
    own[3 * k] = 1.0;

    double& slope = k == 0 ? gradient_[at(held.column)].x : gradient_[at(held.column)].y;
    gradient_[at(line)].x += slope;
    slope = 0.0;
}

void StepSystem::hold(const StraightLines& lines)
{
    findHeld(lines);
    for (const Held& held : held_)
        hold(held);
}

void StepSystem::fix(std::span<const char> isFixed)
{
    const SymbolicCholesky& symbolic = mesh_.symbolic;
    const auto isColumnFixed = [&](int column) {
        return isFixed[at(symbolic.oldOfNew[at(column)])] != 0;
    };
    for (int column = 0; column < symbolic.size(); ++column) {
        const bool isOwnFixed = isColumnFixed(column);
        for (int e = symbolic.columnOffsets[at(column)]; e < symbolic.columnOffsets[at(column) + 1];
             ++e)
            if (isOwnFixed || isColumnFixed(symbolic.entryRows[at(e)]))
                std::fill_n(hessian_.lower.begin() + 4 * e, 4, 0.0);
        if (!isOwnFixed)
            continue;
        double* const own = hessian_.diagonal.data() + 4 * at(column);
        own[0] = own[3] = 1.0;
        own[1] = own[2] = 0.0;
        gradient_[at(column)] = {};
    }
}

double StepSystem::solve(const RunControl& control)
{
    static_assert(sizeof(Vec2) == 2 * sizeof(double));
    for (std::size_t i = 0; i < hessian_.diagonal.size(); i += 4) {
        hessian_.diagonal[i] += regularisation;
        hessian_.diagonal[i + 3] += regularisation;
    }
    for (std::size_t i = 0; i < gradient_.size(); ++i)
        direction_[i] = -1.0 * gradient_[i];
    cholesky_.solve(hessian_, {&direction_[0].x, 2 * direction_.size()}, tolerance_, control);
    for (const Held& held : held_) {
        Vec2& moved = direction_[at(held.column)];
        (held.component == 0 ? moved.x : moved.y) = direction_[at(held.lineColumn)].x;
    }
    double promised = 0.0;
    for (std::size_t i = 0; i < gradient_.size(); ++i)
        promised -= dot(gradient_[i], direction_[i]);
    return promised;
}

} // namespace unfold3d
