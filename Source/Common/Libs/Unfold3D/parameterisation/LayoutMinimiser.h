#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/parameterisation/BorderBarrier.h"
#include "Unfold3D/parameterisation/BorderPush.h"
#include "Unfold3D/parameterisation/DistortionEnergy.h"
#include "Unfold3D/parameterisation/StepSystem.h"

#include <functional>
#include <memory>
#include <vector>

namespace unfold3d
{

/// What is asked of a layout.
struct LayoutRules
{
    LayoutEnergy energy;                    ///< unless it allows that, no triangle flips
    const BorderBarrier* barrier = nullptr; ///< the border doesn't cross itself
    BorderPush* push = nullptr;             ///< pieces of border that overlap are pushed apart
    const StraightLines* lines = nullptr;
    /// How stiffly the lines' vertices are drawn towards them; 0: they are on them and stay there.
    double pull = 0.0;
    Curvature firstCurvature = Curvature::Capped; ///< exact ones follow when steps gain little
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

/// Projected Newton minimisation of the energy of an island's layout.
class LayoutMinimiser
{
public:
    /// Keeps part and control by reference. The order of elimination of the vertices is looked for
    /// unless one is given.
    LayoutMinimiser(const MovablePart& part, const RunControl& control,
                    std::span<const int> eliminationOrder = {});

    struct Outcome
    {
        int steps = 0;
        bool converged = false;
        double energyBefore = 0.0;
        double energyAfter = 0.0;
    };

    /// Gets the layout after each step, and which share of the energy the step promised to gain;
    /// the minimisation ends when it returns false.
    using Observer = std::function<bool(const NodeLayout&, double promisedShare)>;

    /// Improves `uv` ([vertex]) in place until `stop` is met. It must obey the rules, which it does
    /// then, too. A layout that nothing fixes, pushes or holds gets its best scale.
    Outcome minimise(std::vector<Vec2>& uv, const LayoutRules& rules, const StopRule& stop,
                     const Observer& observer);

    /// Scales `uv` ([vertex], nothing flipped) to the least energy.
    void rescale(std::vector<Vec2>& uv) const;

    /// Symmetric Dirichlet energy of `uv` ([vertex]); infinite when a triangle is flipped.
    double energy(std::span<const Vec2> uv) const;

    /// The least determinant of the maps from the rest triangles to `uv` ([vertex]).
    double leastDeterminant(std::span<const Vec2> uv) const;

private:
    bool isScaleFree() const;
    double firstFlipAhead() const;
    void collectSprings();
    void enter(std::span<const Vec2> uv, const LayoutRules& rules);
    void rebuildSystem(const NodeLayout& layout);
    double computeDirection(Curvature kind);
    double search(double energy, double promised);
    double firstObstacle() const;
    double relaxWhatBlocks(double energy);
    void brakeContacts(double obstacle, double promised);
    void moveTrial(double step);
    bool isTrialLegal() const;
    double trialEnergy() const;
    double energyOf(std::span<const Vec2> uv) const;
    NodeLayout layoutOf(std::span<const Vec2> uv) const { return {uv, system_->columnOfNode()}; }
    double rescaleColumns();
    std::vector<Vec2> columnsOf(std::span<const Vec2> uv) const;
    bool isDone(const StopRule& stop, double promised, double energy) const;
    std::vector<Vec2> borderOf(const Border& border, std::span<const Vec2> uv) const
    {
        return borderPositions(border, layoutOf(uv));
    }
    std::vector<Vec2> borderOf(std::span<const Vec2> uv) const
    {
        return borderOf(rules_.barrier->border(), uv);
    }

    const MovablePart& part_;
    const RunControl& control_;
    LayoutRules rules_;
    std::vector<char> isFixed_; ///< [node] empty when everything moves
    std::unique_ptr<StepSystem> system_;
    const StraightLines* systemLines_ = nullptr; ///< that the system has nodes for
    double freshOperations_; ///< of the factorisation when its order was last found anew
    std::vector<Spring> springs_;
    std::vector<Spring> brakes_; ///< for the next step, of contacts that this one ran into
    double brakeShare_ = 0.0;    ///< of what the last step promised, for the next step's brakes
    double brakeWork_ = 0.0;     ///< what that is
    std::vector<Vec2> uv_;       ///< [column], as all layouts in here
    std::vector<Vec2> trial_;
    double stepTaken_ = 0.0; ///< as a multiple of the direction
};

} // namespace unfold3d
