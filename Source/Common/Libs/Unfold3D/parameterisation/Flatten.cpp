#include "Unfold3D/parameterisation/Flatten.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/LayoutMinimiser.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Reach and pressure of the barrier that keeps the border from crossing, in a layout of area 1.
constexpr double plainReach = 1e-3;
constexpr double plainPressure = 1.0;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

bool isFlipFree(const IslandMesh& mesh, std::span<const Vec2> uv)
{
    const auto isFinite = [](Vec2 p) { return std::isfinite(p.x) && std::isfinite(p.y); };
    return std::all_of(uv.begin(), uv.end(), isFinite) &&
           std::all_of(mesh.triangles.begin(), mesh.triangles.end(), [&](const Triangle& t) {
               return orient2d(uv[at(t[0])], uv[at(t[1])], uv[at(t[2])]) > 0;
           });
}

StopRule stopRule(int iterations)
{
    StopRule rule;
    rule.promisedShare = iterations < 0 ? 1e-13 : std::pow(10.0, -(iterations + 2));
    return rule;
}

/// One call of flatten(): its stages share the layout and the report.
class Flattening
{
public:
    Flattening(const IslandMesh& mesh, std::vector<Vec2> start, const FlattenOptions& options,
               const RunControl& control, const std::function<void(double)>& progress)
        : options_(options), control_(control), progress_(progress), mesh_(mesh), border_(mesh),
          minimiser_(mesh), stop_(stopRule(options.iterations)), uv_(std::move(start)), clean_(uv_)
    {}

    FlattenResult run()
    {
        if (options_.iterations == 0) {
            minimiser_.rescale(uv_);
            report_.converged = true;
            report_.method = "no minimisation";
        } else {
            minimiseFreely();
            if (options_.preventBorderCrossings && doesBorderCross(border_, borderOf(uv_)))
                minimiseApart();
        }
        report_.energy = minimiser_.energy(uv_);
        report_.borderCrossings = countBorderCrossings(border_, borderOf(uv_));
        return {std::move(uv_), std::move(report_)};
    }

private:
    std::vector<Vec2> borderOf(std::span<const Vec2> uv) const
    {
        return borderPositions(border_, uv, {});
    }

    /// Keeps in clean_ the last layout on the way whose border doesn't cross.
    void minimiseFreely()
    {
        const double end = options_.preventBorderCrossings ? 0.6 : 1.0;
        const LayoutMinimiser::Outcome outcome =
            minimiser_.minimise(uv_, {}, stop_, control_, [&](const LayoutStep& step) {
                reportProgress(0.0, end, step);
                if (options_.preventBorderCrossings &&
                    !doesBorderCross(border_, borderPositions(border_, step.uv, step.columnOfNode)))
                    for (std::size_t v = 0; v < clean_.size(); ++v)
                        clean_[v] = step.uv[at(step.columnOfNode[v])];
                return true;
            });
        add(outcome, "projected Newton");
    }

    void minimiseApart()
    {
        uv_ = clean_;
        const BorderBarrier barrier(border_, plainReach, plainPressure);
        const LayoutMinimiser::Outcome outcome =
            minimiser_.minimise(uv_, {&barrier}, stop_, control_, [&](const LayoutStep& step) {
                reportProgress(0.6, 1.0, step);
                return true;
            });
        add(outcome, "border barrier");
    }

    void add(const LayoutMinimiser::Outcome& outcome, const char* method)
    {
        report_.steps += outcome.steps;
        report_.converged = outcome.converged;
        report_.method += (report_.method.empty() ? "" : ", ") + std::string(method);
    }

    /// What the steps promise falls by a similar factor each time.
    void reportProgress(double begin, double end, const LayoutStep& step)
    {
        const double share = 1.0 - std::log(step.promisedShare / stop_.promisedShare) /
                                       std::log(1.0 / stop_.promisedShare);
        const double fraction = begin + (end - begin) * std::clamp(share, 0.0, 1.0);
        if (progress_ && fraction > reported_)
            progress_(reported_ = fraction);
    }

    const FlattenOptions& options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    const IslandMesh& mesh_;
    const Border border_;
    LayoutMinimiser minimiser_;
    const StopRule stop_;
    std::vector<Vec2> uv_;
    std::vector<Vec2> clean_; ///< the last layout without crossings
    double reported_ = 0.0;
    FlattenReport report_;
};

FlattenResult handBack(std::vector<Vec2> start, const char* warning)
{
    FlattenResult result;
    result.uv = std::move(start);
    result.report.warnings.emplace_back(warning);
    return result;
}

} // namespace

FlattenResult flatten(const IslandMesh& mesh, std::vector<Vec2> start,
                      const FlattenOptions& options, const RunControl& control,
                      const std::function<void(double)>& progress)
{
    control.checkpoint();
    if (!isFlipFree(mesh, start))
        return handBack(std::move(start),
                        "The first layout has flipped triangles; it was left as it is.");
    return Flattening(mesh, std::move(start), options, control, progress).run();
}

} // namespace unfold3d
