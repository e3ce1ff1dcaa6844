#include "Unfold3D/parameterisation/Flatten.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/LayoutMinimiser.h"
#include "Unfold3D/parameterisation/StraightLines.h"
#include "Unfold3D/parameterisation/Untangle.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Reach and pressure of the barrier that keeps the border from crossing, in a layout of area 1.
constexpr double plainReach = 1e-3;
constexpr double plainPressure = 1.0;
/// Steps without regard to the border end when the border crosses itself twice running and they
/// promise less than this share: it will stay so.
constexpr double settledShare = 0.05;
/// Overlapping pieces are pushed this share of the barrier's reach apart, in so many steps at most.
constexpr double pushedReach = 0.5;
constexpr int maxPushes = 8;
/// Only where at most this share of the border is covered; that much is a tangle.
constexpr double mostCovered = 0.1;
/// Room that is asked for is kept by a barrier of a longer reach, whose pressure rises by this
/// factor as long as pieces of the border are nearer.
constexpr double reachPerRoom = 2.0;
constexpr double pressureGrowth = 8.0;
constexpr double lastPressure = 1000.0;

/// Lines are drawn straight with a stiffness that rises by this factor until they nearly are.
constexpr double firstPull = 10.0;
constexpr double pullGrowth = 10.0;
constexpr double lastPull = 1e6;
/// Each of those stages needs to be good enough for the next only.
constexpr StopRule pullStop{.promisedShare = 1e-2, .promisedShareOfExcess = 1.0, .maxSteps = 12};

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

StopRule stopRule(int iterations)
{
    StopRule rule;
    if (iterations < 0) {
        rule.promisedShare = 1e-13;
        rule.promisedShareOfExcess = 1e-12;
    } else {
        rule.promisedShare = std::pow(10.0, -(iterations + 2));
    }
    return rule;
}

/// One call of flatten(): its stages share the layout and the report.
class Flattening
{
public:
    Flattening(const IslandMesh& mesh, std::vector<Vec2> start, const FlattenOptions& options,
               const RunControl& control, const std::function<void(double)>& progress)
        : mesh_(mesh), options_(options), control_(control), progress_(progress),
          part_(mesh, options.isFixed), border_(mesh),
          minimiser_(part_, control, options.eliminationOrder), stop_(stopRule(options.iterations)),
          reach_(std::max(plainReach, reachPerRoom * options.roomSpace)), uv_(std::move(start))
    {}

    FlattenResult run()
    {
        if (options_.preventBorderCrossings && options_.mayStartCrossing)
            crossingsOfStart_ = countBorderCrossings(border_, borderOf(uv_));
        if (!isLegal(uv_)) {
            report_.warnings.emplace_back("The first layout has flipped triangles or a border that "
                                          "crosses itself; it was left as it is.");
            return {std::move(uv_), std::move(report_)};
        }
        control_.checkpoint();
        StraightLines lines(mesh_, options_.straight, report_.warnings);
        if (!part_.isWhole())
            lines.fix(part_.isFixed, uv_, report_.warnings);
        if (options_.iterations != 0)
            minimise(lines.count() > 0 ? 0.5 : 1.0);
        if (lines.count() > 0)
            straighten(lines);
        if (options_.iterations == 0 && !options_.keepScale && part_.isWhole())
            minimiser_.rescale(uv_);
        control_.checkpoint();
        report_.energy = minimiser_.energy(uv_);
        report_.borderCrossings = countBorderCrossings(border_, borderOf(uv_));
        return {std::move(uv_), std::move(report_)};
    }

private:
    std::vector<Vec2> borderOf(std::span<const Vec2> uv) const
    {
        return borderPositions(border_, {uv});
    }
    bool isLegal(std::span<const Vec2> uv) const
    {
        return isFlipFree(part_.corners, uv) &&
               !(options_.preventBorderCrossings && doesCross(borderOf(uv)));
    }
    /// Whether a border crosses itself where it didn't before.
    bool doesCross(std::span<const Vec2> border) const
    {
        return crossingsOfStart_ == 0 ? doesBorderCross(border_, border)
                                      : countBorderCrossings(border_, border) > crossingsOfStart_;
    }
    BorderBarrier barrier() const
    {
        return BorderBarrier(border_, reach_, pressure_, part_.isFixed);
    }
    LayoutRules rules() const { return {.energy = {.lengths = options_.lengths}}; }

    /// Without regard to the border first, which is quick and mostly all it takes. When the border
    /// crosses itself near the end of that, its pieces are pushed apart, and a barrier between
    /// them finds the least energy.
    void minimise(double progressEnd)
    {
        const bool mayCross = !options_.preventBorderCrossings || crossingsOfStart_ > 0;
        const double middle = options_.preventBorderCrossings ? 0.6 * progressEnd : progressEnd;
        report_.method = "projected Newton";
        std::vector<Vec2> clean = uv_;
        int crossed = 0; // layouts since the last clean one
        step(rules(), stop_, 0.0, middle, [&](const NodeLayout& layout, double promisedShare) {
            if (!options_.preventBorderCrossings)
                return true;
            if (doesCross(borderPositions(border_, layout)))
                return mayCross || ++crossed < 2 || promisedShare > settledShare;
            crossed = 0;
            copyLayout(layout, clean);
            return true;
        });
        if (!options_.preventBorderCrossings)
            return;
        if (mayCross) { // a barrier only works where nothing has crossed it
            if (doesCross(borderOf(uv_)))
                uv_ = std::move(clean);
            return;
        }
        LayoutRules apart = rules();
        if (!doesCross(borderOf(uv_))) {
            if (isRoomKept())
                return;
        } else if (pushApart(0.5 * (middle + progressEnd))) {
            apart.firstCurvature = Curvature::Exact;
        } else {
            uv_ = std::move(clean);
        }
        report_.method += ", border barrier";
        for (;; pressure_ *= pressureGrowth) {
            const BorderBarrier present = barrier();
            apart.barrier = &present;
            step(apart, stop_, middle, progressEnd, {});
            if (isRoomKept() || pressure_ * pressureGrowth > lastPressure)
                break;
        }
    }

    /// Returns whether the border doesn't cross itself any more.
    bool pushApart(double progressEnd)
    {
        BorderPush push(border_, pushedReach * reach_);
        if (push.countCovered(borderOf(uv_)) > mostCovered * border_.size())
            return false;
        report_.method += ", border push";
        LayoutRules pushing = rules();
        pushing.push = &push;
        pushing.firstCurvature = Curvature::Exact;
        constexpr StopRule stop{
            .promisedShare = 1e-12, .promisedShareOfExcess = 1e-12, .maxSteps = maxPushes};
        bool isClean = false;
        step(pushing, stop, reported_, progressEnd, [&](const NodeLayout& layout, double) {
            isClean = !doesCross(borderPositions(border_, layout));
            return !isClean;
        });
        return isClean || !doesCross(borderOf(uv_));
    }

    static void copyLayout(const NodeLayout& from, std::vector<Vec2>& to)
    {
        for (std::size_t v = 0; v < to.size(); ++v)
            to[v] = from.at(static_cast<int>(v));
    }

    bool isRoomKept() const { return barrier().leastDistance(borderOf(uv_)) >= options_.roomSpace; }

    /// Draws the lines straight with rising force, until moving the vertices onto them flips
    /// nothing; then they stay, and the rest follows. Where that fails they are laid straight
    /// anyway, and the rest is untangled. Lines for which neither helps are given up.
    void straighten(StraightLines& lines)
    {
        report_.method += report_.method.empty() ? "straight lines" : ", straight lines";
        if (part_.isWhole())
            lines.turnAlong(uv_);
        const BorderBarrier present = barrier();
        LayoutRules straight = rules();
        if (options_.preventBorderCrossings && crossingsOfStart_ == 0)
            straight.barrier = &present;
        straight.lines = &lines;
        const std::vector<Vec2> before = uv_;
        const bool wasConverged = report_.converged;
        std::vector<StraightLines::Line> givenUp;
        while (lines.count() > 0 && !drawStraight(straight) && !untangleAround(lines, before)) {
            std::ranges::move(lines.keep(snapOneByOne(lines)), std::back_inserter(givenUp));
            uv_ = before;
            report_.converged = wasConverged;
        }
        StraightLines::warnOfGivenUp(givenUp, report_.warnings);
        if (options_.iterations == 0 || lines.count() == 0)
            return;
        straight.pull = 0.0;
        step(straight, stop_, 0.8, 1.0, {});
    }

    /// Returns whether all lines are straight then.
    bool drawStraight(LayoutRules rules)
    {
        bool areStraight = snap(*rules.lines);
        for (double pull = firstPull; !areStraight && pull <= lastPull; pull *= pullGrowth) {
            rules.pull = pull;
            const double done = std::log(pull / firstPull) / std::log(lastPull / firstPull);
            step(rules, pullStop, 0.5 + 0.3 * done, 0.5 + 0.3 * done, {});
            areStraight = snap(*rules.lines);
        }
        return areStraight;
    }

    /// A line that runs back and forth folds when it is drawn straight. Returns whether the rest
    /// finds a way around the lines; only tried where no vertex is fixed.
    bool untangleAround(const StraightLines& lines, const std::vector<Vec2>& before)
    {
        if (!part_.isWhole())
            return false;
        std::vector<Vec2> uv = before;
        const std::vector<char> isLaid = lines.rollOut(mesh_, uv);
        if (isLaid.empty())
            return false;
        const MovablePart rest(mesh_, isLaid);
        if (!isFlipFree(rest.corners, uv))
            uv = untangle(rest, std::move(uv), control_, [](double) {}).uv;
        if (!isLegal(uv))
            return false;
        uv_ = std::move(uv);
        return true;
    }

    /// Moves the vertices of all lines onto them, unless that breaks the layout.
    bool snap(const StraightLines& lines)
    {
        std::vector<Vec2> snapped = uv_;
        for (int l = 0; l < lines.count(); ++l)
            lines.straighten(l, snapped);
        if (!isLegal(snapped))
            return false;
        uv_ = std::move(snapped);
        return true;
    }

    /// [line] whether it can be moved onto itself, after those before it; not all of them can.
    std::vector<char> snapOneByOne(const StraightLines& lines)
    {
        std::vector<char> isStraight(at(lines.count()), 0);
        for (int l = 0; l < lines.count(); ++l) {
            control_.checkpoint();
            std::vector<Vec2> snapped = uv_;
            lines.straighten(l, snapped);
            isStraight[at(l)] = isLegal(snapped);
            if (isStraight[at(l)])
                uv_ = std::move(snapped);
        }
        return isStraight;
    }

    /// One minimisation, as part of the report and of the progress.
    void step(const LayoutRules& rules, const StopRule& stop, double progressBegin,
              double progressEnd, const LayoutMinimiser::Observer& observer)
    {
        const LayoutMinimiser::Outcome outcome = minimiser_.minimise(
            uv_, rules, stop, [&](const NodeLayout& layout, double promisedShare) {
                // What the steps promise falls by a similar factor each time.
                const double done = 1.0 - std::log(promisedShare / stop.promisedShare) /
                                              std::log(1.0 / stop.promisedShare);
                reportProgress(progressBegin +
                               (progressEnd - progressBegin) * std::clamp(done, 0.0, 1.0));
                return !observer || observer(layout, promisedShare);
            });
        report_.steps += outcome.steps;
        report_.converged = outcome.converged;
    }

    void reportProgress(double fraction)
    {
        if (progress_ && fraction > reported_)
            progress_(reported_ = fraction);
    }

    const IslandMesh& mesh_;
    const FlattenOptions& options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    const MovablePart part_;
    const Border border_;
    LayoutMinimiser minimiser_;
    const StopRule stop_;
    const double reach_; ///< of the barrier
    double pressure_ = plainPressure;
    int crossingsOfStart_ = 0; ///< that are accepted
    std::vector<Vec2> uv_;
    double reported_ = 0.0;
    FlattenReport report_;
};

} // namespace

FlattenResult flatten(const IslandMesh& mesh, std::vector<Vec2> start,
                      const FlattenOptions& options, const RunControl& control,
                      const std::function<void(double)>& progress)
{
    control.checkpoint();
    return Flattening(mesh, std::move(start), options, control, progress).run();
}

} // namespace unfold3d
