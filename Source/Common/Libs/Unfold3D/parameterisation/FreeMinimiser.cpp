#include "Unfold3D/parameterisation/FreeMinimiser.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace unfold3d
{

namespace
{

/// Added to the diagonal of the Hessian, whose entries are about 4: rigid motions cost nothing and
/// would leave empty pivots.
constexpr double regularisation = 1e-9;
/// Steps are taken with the exact curvature once one with the capped gained less than this share.
constexpr double lateGain = 0.1;
/// A step keeps this share of the way to the first flip.
constexpr double flipMargin = 0.9;
/// Least gain, as a share of what the slope promises (Armijo).
constexpr double leastGain = 1e-4;
constexpr int maxHalvings = 40;
/// When a whole step was fine, longer ones are tried.
constexpr double strideFactors[] = {1.5, 2.25};

} // namespace

double rescale(const EliminationMesh& mesh, std::vector<Vec2>& uv)
{
    const Distortion distortion = measure(mesh, uv);
    const double scale = distortion.bestScale();
    for (Vec2& point : uv)
        point = scale * point;
    return distortion.bestEnergy();
}

FreeMinimiser::FreeMinimiser(const EliminationMesh& mesh)
    : mesh_(mesh), hessian_(mesh.symbolic, 2), cholesky_(mesh.symbolic),
      direction_(static_cast<std::size_t>(mesh.vertexCount())), trial_(direction_.size())
{}

double FreeMinimiser::computeDirection(std::span<const Vec2> uv, Curvature kind,
                                       const RunControl& control)
{
    static_assert(sizeof(Vec2) == 2 * sizeof(double));
    hessian_.setZero();
    std::vector<Vec2> gradient(uv.size());
    addDerivatives(mesh_, uv, kind, gradient, hessian_);
    for (std::size_t i = 0; i < hessian_.diagonal.size(); i += 4) {
        hessian_.diagonal[i] += regularisation;
        hessian_.diagonal[i + 3] += regularisation;
    }
    cholesky_.factorise(hessian_, control);
    for (std::size_t i = 0; i < gradient.size(); ++i)
        direction_[i] = -1.0 * gradient[i];
    cholesky_.solve({&direction_[0].x, 2 * direction_.size()});
    double decrement = 0.0;
    for (std::size_t i = 0; i < gradient.size(); ++i)
        decrement -= dot(gradient[i], direction_[i]);
    return decrement;
}

double FreeMinimiser::energyAt(std::span<const Vec2> uv, double step)
{
    for (std::size_t i = 0; i < uv.size(); ++i)
        trial_[i] = uv[i] + step * direction_[i];
    return measure(mesh_, trial_).bestEnergy();
}

double FreeMinimiser::search(std::vector<Vec2>& uv, double energy, double decrement)
{
    const double flip = firstFlip(mesh_, uv, direction_);
    double step = std::min(1.0, flipMargin * flip);
    double best = energyAt(uv, step);
    for (int i = 0; i < maxHalvings && !(best <= energy - leastGain * step * decrement); ++i) {
        step *= 0.5;
        best = energyAt(uv, step);
    }
    if (!(best < energy))
        return energy;
    std::vector<Vec2> accepted;
    if (step == 1.0) {
        for (const double factor : strideFactors) {
            if (factor > flipMargin * flip)
                break;
            accepted = trial_;
            const double longer = energyAt(uv, factor);
            if (!(longer < best)) {
                trial_.swap(accepted);
                break;
            }
            best = longer;
        }
    }
    uv = trial_;
    return rescale(mesh_, uv);
}

FreeMinimiser::Outcome
FreeMinimiser::minimise(std::vector<Vec2>& uv, const StopRule& rule, const RunControl& control,
                        const std::function<bool(std::span<const Vec2>, double)>& onStep)
{
    Outcome outcome;
    outcome.energy = rescale(mesh_, uv);
    Curvature kind = Curvature::Capped;
    while (outcome.steps < rule.maxSteps) {
        const double decrement = computeDirection(uv, kind, control);
        ++outcome.steps;
        const double before = outcome.energy;
        outcome.energy = search(uv, before, decrement);
        const double promised = 0.5 * decrement / before;
        if (promised < rule.promisedShare) {
            outcome.converged = true;
            break;
        }
        if (!onStep(uv, promised))
            break;
        const double gained = (before - outcome.energy) / before;
        if (gained <= 0.0 && kind == Curvature::Exact)
            break;
        if (gained < lateGain)
            kind = Curvature::Exact;
    }
    return outcome;
}

} // namespace unfold3d
