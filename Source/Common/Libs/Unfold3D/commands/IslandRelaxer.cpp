#include "Unfold3D/commands/IslandRelaxer.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/commands/IslandFlattener.h"
#include "Unfold3D/layout/Blend.h"
#include "Unfold3D/layout/FloatLayout.h"
#include "Unfold3D/layout/Placement.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace unfold3d
{

namespace
{

/// Share of the progress until a layout is known to be free of flips, or not.
constexpr double progressOfRelaxing = 0.8;

/// A layout in the scale of the surface should have the area 1. One with less than this is a line.
constexpr double areaOfLine = 1e-9;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

int onlyFixed(std::span<const char> isFixed)
{
    const auto first = std::find(isFixed.begin(), isFixed.end(), 1);
    if (first == isFixed.end() || std::find(first + 1, isFixed.end(), 1) != isFixed.end())
        return -1;
    return static_cast<int>(first - isFixed.begin());
}

FlattenOptions freeOfAnchor(FlattenOptions flatten, int anchor)
{
    if (anchor >= 0)
        flatten.isFixed.clear();
    return flatten;
}

std::vector<std::uint8_t> heldCoordinates(std::size_t vertexCount, const FlattenOptions& flatten)
{
    std::vector<std::uint8_t> held(vertexCount, HoldNone);
    for (std::size_t v = 0; v < flatten.isFixed.size(); ++v)
        if (flatten.isFixed[v])
            held[v] = HoldU | HoldV;
    for (const StraightLine& line : flatten.straight)
        for (const int v : line.vertices)
            held[at(v)] |= line.horizontal ? HoldV : HoldU;
    return held;
}

void addNew(std::vector<LayoutWarning>& added, std::vector<LayoutWarning>& warnings)
{
    for (LayoutWarning& warning : added)
        if (std::find(warnings.begin(), warnings.end(), warning) == warnings.end())
            warnings.push_back(std::move(warning));
}

} // namespace

IslandRelaxer::IslandRelaxer(const IslandSurface& surface, std::vector<Vec2> before,
                             FlattenOptions flatten, const RelaxOptions& options,
                             const RunControl& control, const std::function<void(double)>& progress)
    : mesh_(surface.mesh), before_(std::move(before)), anchor_(onlyFixed(flatten.isFixed)),
      held_(heldCoordinates(before_.size(), flatten)),
      flatten_(freeOfAnchor(std::move(flatten), anchor_)), options_(options), control_(control),
      progress_(progress), border_(mesh_),
      frame_(frameOf(mesh_, before_, flatten_.isFixed, surface.size)),
      flipsBefore_(flippedTriangles(mesh_.triangles, before_).size()),
      crossingsBefore_(crossingsOf(before_))
{
    for (const Vec2 p : before_)
        inside_.push_back(frame_.inside(p));
}

void IslandRelaxer::run(IslandLayout& result)
{
    const std::vector<Vec2> after =
        goesNowhere() ? before_ : relaxed(result.method, result.warnings);
    if (!goesNowhere() && options_.power == 1.0 && isAllowed(after))
        result.uv = after;
    else
        result.uv =
            blend(withPinsStraight(result.warnings), after, goesNowhere() ? 0.0 : options_.power,
                  [&](std::span<const Vec2> uv) { return isAllowed(uv); });
    warnOfRest(result.uv, result.warnings);
    result.isUnchanged = result.uv == before_;
}

int IslandRelaxer::crossingsOf(std::span<const Vec2> uv) const
{
    if (!options_.preventBorderCrossings)
        return 0;
    return countBorderCrossings(border_, borderPositions(border_, {uv}));
}

/// What the best rounding leaves.
std::size_t IslandRelaxer::flipsOnFloats(std::span<const Vec2> uv) const
{
    std::vector<Vec2> rounded(uv.begin(), uv.end());
    roundToFloats(mesh_.triangles, rounded, held_);
    return flippedTriangles(mesh_.triangles, rounded).size();
}

/// No worse than what came in.
bool IslandRelaxer::isAllowed(std::span<const Vec2> uv) const
{
    control_.checkpoint();
    return (!options_.preventFlips ||
            (flippedTriangles(mesh_.triangles, uv).size() <= flipsBefore_ &&
             flipsOnFloats(uv) <= flipsBefore_)) &&
           crossingsOf(uv) <= crossingsBefore_;
}

/// What was untangled may have become flat only by lying around itself twice.
bool IslandRelaxer::isSound(const RelaxResult& relaxed) const
{
    const bool mayCross = !options_.preventBorderCrossings && !relaxed.wasTangled;
    return relaxed.flips == 0 && (mayCross || relaxed.report.borderCrossings == 0);
}

/// The whole way, back in UV.
std::vector<Vec2> IslandRelaxer::relaxed(std::string& method, std::vector<LayoutWarning>& warnings)
{
    RelaxResult relaxed = relax(mesh_, inside_, flatten_, control_,
                                [&](double fraction) { progress_(progressOfRelaxing * fraction); });
    if (isWhole() && !(isSound(relaxed) && relaxed.report.isHopeful()))
        layOutAnew(relaxed);
    method = std::move(relaxed.report.method);
    addNew(relaxed.report.warnings, warnings);
    return placed(std::move(relaxed.uv));
}

void IslandRelaxer::layOutAnew(RelaxResult& relaxed)
{
    const std::function<void(double)> progress = [&](double fraction) {
        progress_(progressOfRelaxing + (1.0 - progressOfRelaxing) * fraction);
    };
    FlattenAttempt best = IslandFlattener(mesh_, inside_, flatten_, control_, progress).run();
    if (isSound(relaxed) && !(best.report.energy < relaxed.report.energy))
        return;
    relaxed.report.method += "; anew: " + best.methods();
    relaxed.uv = std::move(best.uv);
    relaxed.report.warnings = std::move(best.report.warnings);
}

/// What gives a layout the area that the island had. Folds and lines tell none and keep their
/// scale.
double IslandRelaxer::scaleOf(std::span<const Vec2> uv) const
{
    const double area = layoutArea(mesh_.triangles, uv).signedSum;
    return area > areaOfLine && isFlipFree(mesh_.triangles, uv) ? frame_.scale / std::sqrt(area)
                                                                : frame_.scale;
}

/// A layout in the scale of the surface, back to where and how large the island was.
std::vector<Vec2> IslandRelaxer::placed(std::vector<Vec2> uv) const
{
    if (!isWhole()) {
        for (std::size_t v = 0; v < uv.size(); ++v)
            uv[v] = flatten_.isFixed[v] ? before_[v] : frame_.outside(uv[v]);
        return uv;
    }
    if (flatten_.straight.empty())
        turnToExpectedSide(mesh_, inside_, uv);
    const double scale = scaleOf(uv);
    for (Vec2& p : uv)
        p = scale * p;
    if (anchor_ < 0) {
        moveMiddleTo(frame_.middle, mesh_.triangleCount(), uv);
        return uv;
    }
    const Vec2 move = before_[at(anchor_)] - uv[at(anchor_)];
    for (Vec2& p : uv)
        p += move;
    uv[at(anchor_)] = before_[at(anchor_)];
    return uv;
}

/// What came in, changed as little as pinned edges ask for.
std::vector<Vec2> IslandRelaxer::withPinsStraight(std::vector<LayoutWarning>& warnings)
{
    if (flatten_.straight.empty())
        return before_;
    FlattenResult straight = straightenOnly(mesh_, inside_, flatten_, control_);
    addNew(straight.report.warnings, warnings);
    if (straight.uv == inside_)
        return before_;
    std::vector<Vec2> uv = placed(std::move(straight.uv));
    if (isAllowed(uv))
        return uv;
    warnings.emplace_back("Constrained edges can't be straight in the precision of floats; left "
                          "as they were.");
    return before_;
}

void IslandRelaxer::warnOfRest(std::span<const Vec2> uv, std::vector<LayoutWarning>& warnings) const
{
    if (options_.preventFlips && !isFlipFree(mesh_.triangles, uv))
        warnings.emplace_back(
            "Some triangles stay flipped: those that came in so and could not be turned.");
    if (crossingsOf(uv) > 0)
        warnings.emplace_back("The border crosses itself in places where it came in so.");
}

} // namespace unfold3d
