#include "Unfold3D/seams/TrialUnfold.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/Flatten.h"
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

TrialUnfold minimised(const IslandMesh& patch, std::vector<Vec2> start, bool keepsApart,
                      const RunControl& control)
{
    TrialUnfold trial{std::numeric_limits<double>::infinity(), false, {}};
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

TrialUnfold fromScratch(const IslandMesh& patch, bool keepsApart, const RunControl& control)
{
    FlatStartFinder starts(patch, control);
    std::optional<FlatStart> start = starts.next();
    if (!start)
        return {std::numeric_limits<double>::infinity(), false, {}};
    return minimised(patch, std::move(start->uv), keepsApart, control);
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

} // namespace

TrialUnfold tryUnfold(const IslandMesh& patch, const RunControl& control)
{
    return fromScratch(patch, true, control);
}

TrialUnfold tryUnfoldFrom(const IslandMesh& patch, std::span<const CornerUVs> corners,
                          double enough, const RunControl& control)
{
    std::vector<Vec2> start = meanOfCorners(patch, corners);
    if (!isFlipFree(patch.triangles, start))
        start = stitchedLayout(patch.triangles, patch.vertexCount(), corners, control);
    if (!isFlipFree(patch.triangles, start))
        return fromScratch(patch, false, control);
    const double energy = startDistortion(patch, start);
    const Border border(patch);
    const bool overlaps = doesBorderCross(border, borderPositions(border, {start}));
    if (energy <= enough)
        return {energy, overlaps, std::move(start)};
    TrialUnfold free = minimised(patch, start, false, control);
    if (!free.overlaps || overlaps)
        return free;
    return minimised(patch, std::move(start), true, control);
}

} // namespace unfold3d
