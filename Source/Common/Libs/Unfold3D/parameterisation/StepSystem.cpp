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

void StepSystem::set(std::span<const Vec2> uv, Curvature kind)
{
    hessian_.setZero();
    std::fill(gradient_.begin(), gradient_.end(), Vec2{});
    addDerivatives(mesh_, uv, kind, gradient_, hessian_);
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

double StepSystem::solve(const RunControl& control)
{
    static_assert(sizeof(Vec2) == 2 * sizeof(double));
    for (std::size_t i = 0; i < hessian_.diagonal.size(); i += 4) {
        hessian_.diagonal[i] += regularisation;
        hessian_.diagonal[i + 3] += regularisation;
    }
    cholesky_.factorise(hessian_, control);
    for (std::size_t i = 0; i < gradient_.size(); ++i)
        direction_[i] = -1.0 * gradient_[i];
    cholesky_.solve({&direction_[0].x, 2 * direction_.size()});
    double promised = 0.0;
    for (std::size_t i = 0; i < gradient_.size(); ++i)
        promised -= dot(gradient_[i], direction_[i]);
    return promised;
}

} // namespace unfold3d
