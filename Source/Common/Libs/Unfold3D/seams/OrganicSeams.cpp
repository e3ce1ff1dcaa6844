#include "Unfold3D/seams/OrganicSeams.h"

#include "Unfold3D/seams/HiddenSeamCosts.h"
#include "Unfold3D/seams/LimbEnds.h"
#include "Unfold3D/seams/OpenPatches.h"
#include "Unfold3D/seams/SeamForecast.h"
#include "Unfold3D/seams/SeamGrowth.h"
#include "Unfold3D/seams/ShorterSeams.h"
#include "Unfold3D/seams/TubeRings.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Energy that a seam as long as the diagonal has to win, at a segment amount of 0 and of 1.
constexpr double highestPrice = 0.1;
constexpr double lowestPrice = 0.008;
/// Vertices to factorise for in all, and the least number of forecasts all the same.
constexpr double verticesToForecast = 2.5e6;
constexpr double fewestForecasts = 12.0;
constexpr double mostForecasts = 80.0;

GrowthOptions growthOptions(const SeamMesh& mesh, double segmentAmount)
{
    GrowthOptions options;
    options.price = highestPrice * std::pow(lowestPrice / highestPrice, segmentAmount);
    options.allForecasts = static_cast<int>(std::clamp(
        verticesToForecast / std::max(mesh.vertexCount(), 1), fewestForecasts, mostForecasts));
    options.growthForecasts = options.allForecasts / 2;
    return options;
}

/// Whether a patch lies flat as it is: nothing inside of it is curved.
bool isFlat(const SeamMesh& mesh, std::span<const double> angleDefects, std::span<const char> isCut,
            std::span<const int> triangles)
{
    constexpr double mostCurvature = 0.05;
    double curvature = 0.0;
    for (const int t : triangles)
        for (const int v : mesh.triangles[static_cast<std::size_t>(t)])
            if (!isCut[static_cast<std::size_t>(v)])
                curvature += std::abs(angleDefects[static_cast<std::size_t>(v)]) / 6.0;
    return curvature < mostCurvature;
}

/// Makes disks of all patches; only flat ones keep their holes.
void openAll(SeamDraft& draft, const SeamForecaster& forecaster, const RunControl& control)
{
    PatchOpener opener(draft.mesh, draft.pathCosts, draft.isSeam, control);
    const std::vector<char> isCut = draft.cutVertices();
    const Patches patches = findPatches(draft.mesh, draft.isSeam);
    for (int patch = 0; patch < patches.count(); ++patch) {
        opener.keepFlatHoles(
            isFlat(draft.mesh, forecaster.angleDefects(), isCut, patches.triangles[patch]));
        opener.open(patches.triangles[patch]);
    }
    draft.parts = findParts(draft.mesh, draft.isSeam);
}

} // namespace

std::vector<char> organicSeams(const SeamMesh& mesh, const OrganicOptions& options,
                               RunControl& control)
{
    const GrowthOptions growth = growthOptions(mesh, options.segmentAmount);
    SeamDraft draft(mesh, hiddenSeamCosts(mesh, control));
    SeamForecaster forecaster(mesh, control);
    control.setProgress(0.1);
    if (options.usePipesCutter) {
        TubeRingOptions rings;
        layTubeRings(draft, limbEnds(draft, forecaster), rings, control);
        draft.parts = findParts(mesh, draft.isSeam);
    }
    openClosedParts(draft, forecaster, control);
    openAll(draft, forecaster, control);
    growSeams(draft, forecaster, growth, control);
    shortenSeams(draft, control);
    pruneSeams(draft, forecaster, growth, control);
    return draft.isSeam;
}

} // namespace unfold3d
