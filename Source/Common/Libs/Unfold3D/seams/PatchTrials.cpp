#include "Unfold3D/seams/PatchTrials.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>

namespace unfold3d
{

namespace
{

void scale(std::vector<CornerUVs>& corners, double factor)
{
    for (CornerUVs& uv : corners)
        for (Vec2& p : uv)
            p = factor * p;
}

std::vector<CornerUVs> uvOfCorners(const IslandMesh& patch, const std::vector<Vec2>& uv,
                                   double scale)
{
    std::vector<CornerUVs> corners(patch.triangles.size());
    for (std::size_t t = 0; t < corners.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i)
            corners[t][i] = scale * uv[static_cast<std::size_t>(patch.triangles[t][i])];
    return corners;
}

} // namespace

PatchTrials::PatchTrials(const SeamMesh& mesh, std::span<const char> isSeam,
                         const RunControl& control)
    : mesh_(mesh), isSeam_(isSeam), control_(control), takers_([&mesh] { return PatchTaker(mesh); })
{}

void PatchTrials::run(std::span<PatchLayout> pieces, std::span<const TrialLimits> limits)
{
    // The largest first, so that none is left to the end alone.
    std::vector<std::size_t> order(pieces.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return pieces[a].triangles.size() > pieces[b].triangles.size();
    });
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, order.size(), 1),
        [&](const tbb::blocked_range<std::size_t>& range) {
            for (std::size_t k = range.begin(); k < range.end(); ++k)
                tryPiece(pieces[order[k]], limits[order[k]]);
        },
        tbb::simple_partitioner());
}

void PatchTrials::tryPiece(PatchLayout& piece, const TrialLimits& limits)
{
    control_.checkpoint();
    const PatchSurface surface = takers_.local().take(piece.triangles, isSeam_);
    scale(piece.corners, 1.0 / surface.size);
    const TrialUnfold trial = piece.corners.empty()
                                  ? tryUnfold(surface.mesh, limits, control_)
                                  : tryUnfoldFrom(surface.mesh, piece.corners, limits, control_);
    piece.area = 0.0;
    for (const int t : piece.triangles)
        piece.area += mesh_.areas[static_cast<std::size_t>(t)];
    piece.corners.clear();
    if (!trial.uv.empty())
        piece.corners = uvOfCorners(surface.mesh, trial.uv, surface.size);
    piece.energy = trial.overlaps ? std::numeric_limits<double>::infinity() : trial.energy;
}

} // namespace unfold3d
