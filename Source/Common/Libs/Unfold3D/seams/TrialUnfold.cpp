#include "Unfold3D/seams/TrialUnfold.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/FlatStart.h"

#include <cmath>
#include <limits>
#include <utility>

namespace unfold3d
{

namespace
{

TrialUnfold unfold(const IslandMesh& patch, bool preventBorderCrossings, const RunControl& control)
{
    TrialUnfold trial{std::numeric_limits<double>::infinity(), false};
    FlatStartFinder starts(patch, control);
    std::optional<FlatStart> start = starts.next();
    if (!start)
        return trial;
    FlattenOptions options;
    options.preventBorderCrossings = preventBorderCrossings;
    const FlattenResult flat = flatten(patch, std::move(start->uv), options, control, {});
    if (!std::isfinite(flat.report.energy) || !isFlipFree(patch.triangles, flat.uv))
        return trial;
    trial.energy = flat.report.energy;
    trial.overlaps = flat.report.borderCrossings > 0;
    return trial;
}

} // namespace

TrialUnfold tryUnfold(const IslandMesh& patch, const RunControl& control)
{
    return unfold(patch, false, control);
}

TrialUnfold tryUnfoldApart(const IslandMesh& patch, const RunControl& control)
{
    return unfold(patch, true, control);
}

} // namespace unfold3d
