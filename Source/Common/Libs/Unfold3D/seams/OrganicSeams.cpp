#include "Unfold3D/seams/OrganicSeams.h"

#include "Unfold3D/seams/AngleDefects.h"
#include "Unfold3D/seams/ClosedParts.h"
#include "Unfold3D/seams/CoarseMesh.h"
#include "Unfold3D/seams/HiddenSeamCosts.h"
#include "Unfold3D/seams/LimbEnds.h"
#include "Unfold3D/seams/OpenPatches.h"
#include "Unfold3D/seams/SeamForecast.h"
#include "Unfold3D/seams/SeamGrowth.h"
#include "Unfold3D/seams/SeamPruning.h"
#include "Unfold3D/seams/ShorterSeams.h"
#include "Unfold3D/seams/SplitOverlaps.h"
#include "Unfold3D/seams/TubeRings.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// The segment amount is taken in so many steps. Each lays its seams beside those of the step
/// before, so that more of it never takes a seam away.
constexpr int stepCount = 4;
/// Energy that a seam as long as the part is large has to win, at the first and the last step.
constexpr double highestPrice = 0.07;
constexpr double lowestPrice = 0.006;
/// What large meshes are made coarse to, where a few thousand vertices tell enough.
constexpr int mostVertices = 3500;
/// From this step on limbs are cut off, those that are this many diameters long at it, and those at
/// the last step.
constexpr int firstStepWithLimbs = 1;
constexpr double longLimb = 2.5;
constexpr double shortLimb = 0.8;
/// Vertices to factorise for in the first step, and the least and most forecasts; other steps go on
/// from a good state and get a share of that.
constexpr double verticesToForecast = 8e5;
constexpr double fewestForecasts = 6.0;
constexpr double mostForecasts = 40.0;
constexpr double shareOfLaterSteps = 0.4;

GrowthOptions growthOptions(int vertexCount, int step)
{
    GrowthOptions options;
    options.price =
        highestPrice * std::pow(lowestPrice / highestPrice, static_cast<double>(step) / stepCount);
    const double budget = verticesToForecast * (step == 0 ? 1.0 : shareOfLaterSteps);
    options.growthForecasts = static_cast<int>(
        std::clamp(budget / std::max(vertexCount, 1), fewestForecasts, mostForecasts));
    options.pruningForecasts = options.growthForecasts / 2;
    return options;
}

TubeRingOptions limbOptions(int step)
{
    const double share =
        static_cast<double>(step - firstStepWithLimbs) / (stepCount - firstStepWithLimbs);
    TubeRingOptions options;
    options.leastLength = longLimb + share * (shortLimb - longLimb);
    options.cutCaps = false;
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
void openAll(SeamDraft& draft, std::span<const double> defects, const RunControl& control)
{
    PatchOpener opener(draft.mesh, draft.pathCosts, draft.isSeam, control);
    const std::vector<char> isCut = draft.cutVertices();
    const Patches patches = findPatches(draft.mesh, draft.isSeam);
    for (int patch = 0; patch < patches.count(); ++patch) {
        opener.keepFlatHoles(isFlat(draft.mesh, defects, isCut, patches.triangles[patch]));
        opener.open(patches.triangles[patch]);
    }
    draft.parts = findParts(draft.mesh, draft.isSeam);
}

} // namespace

std::vector<char> organicSeams(const SeamMesh& mesh, const OrganicOptions& options,
                               RunControl& control)
{
    const int lastStep =
        static_cast<int>(std::lround(stepCount * std::clamp(options.segmentAmount, 0.0, 1.0)));
    const CoarseMesh coarse = coarsened(mesh.positions, mesh.triangles, mostVertices, control);
    SeamDraft draft(mesh, hiddenSeamCosts(mesh, coarse.vertexOf, control));
    SeamForecaster forecaster(mesh, coarse, control);
    control.checkpoint();
    const std::vector<double> defects = angleDefects(mesh);
    control.setProgress(0.1);
    DistanceBands bands;
    if (options.usePipesCutter || lastStep >= firstStepWithLimbs)
        bands = findDistanceBands(mesh, draft.parts, limbEnds(draft, forecaster), control);
    if (options.usePipesCutter)
        layTubeRings(draft, bands, {}, control);
    openClosedParts(draft, forecaster, control);
    for (int step = 0; step <= lastStep; ++step) {
        if (step >= firstStepWithLimbs)
            layTubeRings(draft, bands, limbOptions(step), control);
        openAll(draft, defects, control);
        const GrowthOptions growth = growthOptions(forecaster.vertexCount(), step);
        growSeams(draft, forecaster, growth, control);
        shortenSeams(draft, control);
        pruneSeams(draft, forecaster, growth, control);
        draft.settle();
        // Once only: later steps add to what every amount has.
        if (step == 0)
            splitOverlaps(draft, control);
    }
    return draft.isSeam;
}

} // namespace unfold3d
