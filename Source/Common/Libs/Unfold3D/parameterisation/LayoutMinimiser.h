#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/parameterisation/BorderBarrier.h"
#include "Unfold3D/parameterisation/DistortionEnergy.h"
#include "Unfold3D/parameterisation/StepSystem.h"

#include <functional>
#include <memory>
#include <vector>

namespace unfold3d
{

/// What holds for a layout beside that no triangle flips.
struct LayoutRules
{
    const BorderBarrier* barrier = nullptr; ///< the border doesn't cross itself

    bool areEmpty() const { return barrier == nullptr; }
};

/// When a minimisation is done.
struct StopRule
{
    /// The next step promises less than this share of the energy.
    double promisedShare = 1e-3;
    /// And less than this share of what the energy is above that of an undistorted layout, so that
    /// a surface which can be laid out without distortion is.
    double promisedShareOfExcess = 0.01;
    int maxSteps = 200;
};

/// A layout on its way: vertex v lies at uv[columnOfNode[v]].
struct LayoutStep
{
    std::span<const Vec2> uv;
    std::span<const int> columnOfNode;
    double promisedShare; ///< of the energy, by the step that led here
};

/// Projected Newton minimisation of the symmetric Dirichlet energy of an island's layout.
class LayoutMinimiser
{
public:
    explicit LayoutMinimiser(const IslandMesh& mesh);

    struct Outcome
    {
        int steps = 0;
        bool converged = false;
    };

    /// Called after each step; the minimisation ends when it returns false.
    using Observer = std::function<bool(const LayoutStep&)>;

    /// Improves `uv` ([vertex]) in place until `stop` is met. It must obey the rules and have no
    /// triangle flipped; both stay so. Without rules the result has its best scale.
    Outcome minimise(std::vector<Vec2>& uv, const LayoutRules& rules, const StopRule& stop,
                     const RunControl& control, const Observer& observer);

    /// Scales `uv` ([vertex], nothing flipped) to the least energy.
    void rescale(std::vector<Vec2>& uv) const;

    /// Symmetric Dirichlet energy of `uv` ([vertex]); infinite when a triangle is flipped.
    double energy(std::span<const Vec2> uv) const;

private:
    void collectSprings();
    void rebuildSystem();
    double computeDirection(Curvature kind, const RunControl& control);
    double search(double energy, double promised);
    double firstObstacle() const;
    void brakeContacts(double obstacle, double promised);
    void moveTrial(double step);
    bool isTrialLegal() const;
    double trialEnergy() const;
    double energyOf(std::span<const Vec2> uv) const;
    double rescaleColumns();
    bool isDone(const StopRule& stop, double promised, double energy) const;
    std::vector<Vec2> borderOf(std::span<const Vec2> uv) const;

    const IslandMesh& island_;
    LayoutRules rules_;
    std::unique_ptr<StepSystem> system_;
    double freshOperations_; ///< of the factorisation when its order was last found anew
    std::vector<Spring> springs_;
    std::vector<Spring> brakes_; ///< for the next step
    std::vector<Vec2> uv_;       ///< [column], as all layouts in here
    std::vector<Vec2> trial_;
};

} // namespace unfold3d
