#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/parameterisation/DistortionEnergy.h"

#include <functional>
#include <vector>

namespace unfold3d
{

/// When a minimisation is done.
struct StopRule
{
    /// The next step promises less than this share of the energy.
    double promisedShare = 1e-3;
    int maxSteps = 200;
};

/// Projected Newton minimisation of the symmetric Dirichlet energy, without regard to the border.
class FreeMinimiser
{
public:
    explicit FreeMinimiser(const EliminationMesh& mesh);

    struct Outcome
    {
        int steps = 0;
        bool converged = false;
        double energy = 0.0;
    };

    /// Improves `uv` ([column], no triangle flipped) in place until the rule is met; the result has
    /// its best scale. `onStep` gets the layout and its energy after each step; when it returns
    /// false, the minimisation ends there.
    Outcome
    minimise(std::vector<Vec2>& uv, const StopRule& rule, const RunControl& control,
             const std::function<bool(std::span<const Vec2>, double promisedShare)>& onStep);

private:
    /// Computes the step and returns the decrease of the quadratic model, doubled.
    double computeDirection(std::span<const Vec2> uv, Curvature kind, const RunControl& control);
    /// Moves `uv` along the direction; returns the energy at the best scale or the old one when no
    /// length of step gains anything.
    double search(std::vector<Vec2>& uv, double energy, double decrement);
    double energyAt(std::span<const Vec2> uv, double step);

    const EliminationMesh& mesh_;
    BlockMatrix hessian_;
    SparseCholesky cholesky_;
    std::vector<Vec2> direction_;
    std::vector<Vec2> trial_;
};

/// Scales a layout to the least energy; returns that energy.
double rescale(const EliminationMesh& mesh, std::vector<Vec2>& uv);

} // namespace unfold3d
