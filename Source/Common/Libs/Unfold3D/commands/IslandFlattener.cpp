#include "Unfold3D/commands/IslandFlattener.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/layout/Placement.h"

#include <cmath>

namespace unfold3d
{

namespace
{

/// Share of the progress that is left which an attempt takes: mostly it is the only one.
constexpr double progressOfAttempt = 0.9;

} // namespace

bool FlattenAttempt::isGood() const
{
    return !uv.empty() && report.isHopeful();
}

bool FlattenAttempt::isBetterThan(const FlattenAttempt& other) const
{
    return !uv.empty() && (other.uv.empty() || report.energy < other.report.energy);
}

std::string FlattenAttempt::methods() const
{
    std::string text = nameOf(start);
    text += " start";
    if (!report.method.empty())
        text.append(", ").append(report.method);
    return text;
}

FlattenAttempt IslandFlattener::run()
{
    std::optional<FlatStart> start = starts_.next();
    FlattenAttempt best = flattenFrom(*start);
    while (!best.isGood() && (start = starts_.next())) {
        FlattenAttempt attempt = flattenFrom(*start);
        if (attempt.isBetterThan(best))
            best = std::move(attempt);
    }
    if (best.uv.empty())
        best = settleFor(flatStart(mesh_, control_));
    if (options_.straight.empty())
        turnToExpectedSide(mesh_, oldLayout_, best.uv);
    return best;
}

FlattenAttempt IslandFlattener::flattenFrom(FlatStart& start)
{
    control_.checkpoint();
    turnToExpectedSide(mesh_, oldLayout_, start.uv);
    control_.checkpoint();
    const double begin = done_;
    done_ += progressOfAttempt * (1.0 - done_);
    options_.eliminationOrder = starts_.eliminationOrder();
    FlattenResult flat =
        flatten(mesh_, std::move(start.uv), options_, control_,
                [&](double fraction) { progress_(begin + fraction * (done_ - begin)); });
    progress_(done_);
    control_.checkpoint();
    if (!isFlipFree(mesh_.triangles, flat.uv))
        flat.uv.clear();
    return {start.method, std::move(flat.uv), std::move(flat.report)};
}

/// A start itself, at the scale of the surface.
FlattenAttempt IslandFlattener::settleFor(FlatStart start) const
{
    double area = 0.0;
    for (const auto& [a, b, c] : mesh_.triangles)
        area += 0.5 * doubleArea(start.uv[static_cast<std::size_t>(a)],
                                 start.uv[static_cast<std::size_t>(b)],
                                 start.uv[static_cast<std::size_t>(c)]);
    for (Vec2& p : start.uv)
        p = (1.0 / std::sqrt(area)) * p;
    FlattenAttempt attempt{start.method, std::move(start.uv), {}};
    attempt.report.warnings.emplace_back(
        "The flattening failed; the layout is only a first one, without flipped triangles but "
        "distorted.");
    return attempt;
}

} // namespace unfold3d
