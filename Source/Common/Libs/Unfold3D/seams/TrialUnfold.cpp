#include "Unfold3D/seams/TrialUnfold.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/parameterisation/Untangle.h"
#include "Unfold3D/seams/CoarseMesh.h"
#include "Unfold3D/seams/StitchLayout.h"
#include "Unfold3D/start/FlatStart.h"
#include "Unfold3D/start/StartDistortion.h"

#include <cmath>
#include <limits>
#include <utility>

namespace unfold3d
{

namespace
{

TrialUnfold noLayout()
{
    return {std::numeric_limits<double>::infinity(), false, {}};
}

TrialUnfold minimised(const IslandMesh& patch, std::vector<Vec2> start, bool keepsApart,
                      const RunControl& control)
{
    TrialUnfold trial = noLayout();
    FlattenOptions options;
    options.preventBorderCrossings = keepsApart;
    FlattenResult flat = flatten(patch, std::move(start), options, control, {});
    if (!std::isfinite(flat.report.energy) || !isFlipFree(patch.triangles, flat.uv))
        return trial;
    trial.energy = flat.report.energy;
    trial.overlaps = flat.report.borderCrossings > 0;
    trial.uv = std::move(flat.uv);
    return trial;
}

std::vector<Vec2> meanOfCorners(const IslandMesh& patch, std::span<const CornerUVs> corners)
{
    std::vector<Vec2> uv(patch.positions.size());
    std::vector<int> count(patch.positions.size(), 0);
    for (std::size_t t = 0; t < patch.triangles.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto v = static_cast<std::size_t>(patch.triangles[t][i]);
            uv[v] += corners[t][i];
            ++count[v];
        }
    for (std::size_t v = 0; v < uv.size(); ++v)
        uv[v] = (1.0 / count[v]) * uv[v];
    return uv;
}

/// What is tried again from scratch, where that is quick, because flipped triangles were in the
/// way.
constexpr std::size_t quickCount = 1500;

/// From a start that may lie over itself.
TrialUnfold improved(const IslandMesh& patch, std::vector<Vec2> start, const TrialLimits& limits,
                     const RunControl& control)
{
    const double energy = startDistortion(patch, start);
    const Border border(patch);
    const bool overlaps = doesBorderCross(border, borderPositions(border, {start}));
    if (energy <= limits.enough)
        return {energy, overlaps, std::move(start)};
    TrialUnfold free = minimised(patch, start, false, control);
    if (!free.overlaps || overlaps || free.energy > limits.most)
        return free;
    if (energy <= limits.most && std::isfinite(limits.most))
        return {energy, false, std::move(start)};
    return minimised(patch, std::move(start), true, control);
}

/// What is larger is tried with about so many vertices first.
constexpr int quickVertices = 2000;
/// Whether a large patch comes out far above the limit even when it is made coarse, which takes
/// strain away rather than adding to it.
bool isHopeless(const IslandMesh& patch, const TrialLimits& limits, const RunControl& control)
{
    constexpr double farAbove = 0.02;
    if (patch.vertexCount() < 2 * quickVertices || !std::isfinite(limits.most))
        return false;
    CoarseMesh coarse = coarsened(patch.positions, patch.triangles, quickVertices, control);
    const IslandMesh few{std::move(coarse.positions), std::move(coarse.triangles)};
    return tryUnfoldFreely(few, control).energy > limits.most + farAbove;
}

} // namespace

TrialUnfold tryUnfold(const IslandMesh& patch, const TrialLimits& limits, const RunControl& control)
{
    if (isHopeless(patch, limits, control))
        return noLayout();
    std::optional<FlatStart> start = FlatStartFinder(patch, control).next();
    return start ? improved(patch, std::move(start->uv), limits, control) : noLayout();
}

TrialUnfold tryUnfoldFreely(const IslandMesh& patch, const RunControl& control)
{
    std::optional<FlatStart> start = FlatStartFinder(patch, control).next();
    return start ? minimised(patch, std::move(start->uv), false, control) : noLayout();
}

TrialUnfold tryUnfoldFrom(const IslandMesh& patch, std::span<const CornerUVs> corners,
                          const TrialLimits& limits, const RunControl& control)
{
    std::vector<Vec2> start = meanOfCorners(patch, corners);
    if (isFlipFree(patch.triangles, start))
        return improved(patch, std::move(start), limits, control);
    start = stitchedLayout(patch.triangles, patch.vertexCount(), corners, control);
    if (isFlipFree(patch.triangles, start))
        return improved(patch, std::move(start), limits, control);
    start = untangle(MovablePart(patch, {}), std::move(start), control, [](double) {}).uv;
    TrialUnfold trial = isFlipFree(patch.triangles, start)
                            ? improved(patch, std::move(start), limits, control)
                            : noLayout();
    if (!trial.isWithin(std::numeric_limits<double>::max()) && patch.triangles.size() < quickCount)
        return tryUnfold(patch, limits, control);
    return trial;
}

} // namespace unfold3d
