#include "Unfold3D/seams/SplitOverlaps.h"

#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/seams/CoarseMesh.h"
#include "Unfold3D/seams/LayoutOverlap.h"
#include "Unfold3D/seams/PatchPaths.h"
#include "Unfold3D/seams/PatchSurface.h"
#include "Unfold3D/seams/Patches.h"
#include "Unfold3D/seams/TrialUnfold.h"

#include <algorithm>
#include <utility>

#include <tbb/blocked_range.h>
#include <tbb/enumerable_thread_specific.h>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

/// A patch that lies over itself with more of its area is cut.
constexpr double mostOverlap = 0.1;
/// Large patches are tried with about so many vertices: what is looked for is large as well.
constexpr int trialVertices = 4000;
/// Rounds of cuts; each can halve a patch.
constexpr int mostRounds = 5;
/// Share of the border between the two places that cuts don't begin at, beside either.
constexpr double besidePlaces = 0.15;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The cheapest cut through a patch that parts two of its triangles, by edges of the mesh.
class PatchSplitter
{
public:
    PatchSplitter(const SeamDraft& draft, const PatchSurface& patch, std::span<const int> triangles,
                  const RunControl& control)
        : patch_(patch), control_(control), border_(patch.mesh),
          paths_(draft.mesh, patch, triangles, draft.pathCosts, draft.isSeam)
    {}

    /// Each of the two is given by its corners.
    std::vector<int> cutBetween(const Triangle& triangleA, const Triangle& triangleB) const
    {
        const int a = borderPointBeside(triangleA);
        const int b = borderPointBeside(triangleB);
        if (a < 0 || b < 0)
            return {};
        std::vector<int> oneSide = middleOfWay(a, b);
        std::vector<int> otherSide = middleOfWay(b, a);
        if (a == b || oneSide.empty() || otherSide.empty()) {
            // As beside the tip of a cone both are at one place, and the cut begins there.
            oneSide = {border_.vertexOf(a)};
            otherSide = middleOfWay(a, a);
        }
        std::vector<char> isGoal(patch_.vertices.size(), 0);
        for (const int v : otherSide)
            isGoal[at(v)] = 1;
        int end = -1;
        return paths_.wayTo(oneSide, isGoal, control_, end);
    }

private:
    /// A point of the border near a triangle, on ways inside of the patch; -1 where there is none.
    int borderPointBeside(const Triangle& corners) const
    {
        std::vector<char> isGoal(patch_.vertices.size(), 0);
        for (int v = 0; v < patch_.mesh.vertexCount(); ++v)
            isGoal[at(v)] = static_cast<char>(paths_.isOnBorder(v));
        int end = -1;
        for (const int v : corners)
            if (isGoal[at(v)])
                end = v;
        if (end < 0)
            paths_.wayTo(corners, isGoal, control_, end);
        for (int point = 0; point < border_.size(); ++point)
            if (border_.vertexOf(point) == end)
                return point;
        return -1;
    }

    /// The vertices along the border from one point to another or once around to itself, without
    /// those beside either; none where they lie on different loops.
    std::vector<int> middleOfWay(int from, int to) const
    {
        std::vector<int> vertices;
        for (int point = border_.next(from); point != to; point = border_.next(point)) {
            if (point == from)
                return {};
            vertices.push_back(border_.vertexOf(point));
        }
        const auto margin =
            static_cast<std::ptrdiff_t>(besidePlaces * static_cast<double>(vertices.size()));
        return {vertices.begin() + margin, vertices.end() - margin};
    }

    const PatchSurface& patch_;
    const RunControl& control_;
    Border border_;
    PatchPaths paths_;
};

class OverlapSplitter
{
public:
    OverlapSplitter(SeamDraft& draft, RunControl& control)
        : draft_(draft), control_(control), takers_([this] { return PatchTaker(draft_.mesh); })
    {}

    void run()
    {
        std::vector<char> isWanted(draft_.mesh.triangles.size(), 1);
        for (int round = 0; round < mostRounds; ++round) {
            const std::vector<std::vector<int>> cuts = cutsOfPatches(isWanted);
            control_.approach(1.0, 0.2);
            if (std::all_of(cuts.begin(), cuts.end(), [](const auto& c) { return c.empty(); }))
                break;
            for (const std::vector<int>& cut : cuts)
                for (const int e : cut)
                    draft_.isSeam[at(e)] = 1;
        }
        draft_.parts = findParts(draft_.mesh, draft_.isSeam);
    }

private:
    /// The cuts for the patches whose first triangle is wanted; leaves those that are wanted next.
    std::vector<std::vector<int>> cutsOfPatches(std::vector<char>& isWanted)
    {
        const Patches patches = findPatches(draft_.mesh, draft_.isSeam);
        std::vector<std::vector<int>> cuts(at(patches.count()));
        tbb::parallel_for(tbb::blocked_range<int>(0, patches.count(), 1),
                          [&](const tbb::blocked_range<int>& range) {
                              for (int p = range.begin(); p < range.end(); ++p)
                                  if (isWanted[at(patches.triangles[p].front())])
                                      cuts[at(p)] = cutOf(patches.triangles[p]);
                          });
        for (int p = 0; p < patches.count(); ++p)
            for (const int t : patches.triangles[p])
                isWanted[at(t)] = static_cast<char>(!cuts[at(p)].empty());
        return cuts;
    }

    std::vector<int> cutOf(std::span<const int> triangles)
    {
        control_.checkpoint();
        const PatchSurface patch = takers_.local().take(triangles, draft_.isSeam);
        const CoarseMesh coarse =
            coarsened(patch.mesh.positions, patch.mesh.triangles, trialVertices, control_);
        const TrialUnfold trial =
            tryUnfoldFreely(IslandMesh{coarse.positions, coarse.triangles}, control_);
        if (!trial.overlaps)
            return {};
        const LayoutOverlap overlap = findOverlap(coarse.triangles, trial.uv);
        if (overlap.share < mostOverlap)
            return {};
        const auto corners = [&](int triangle) {
            Triangle fine = coarse.triangles[at(triangle)];
            for (int& v : fine)
                v = coarse.vertexOf[at(v)];
            return fine;
        };
        return PatchSplitter(draft_, patch, triangles, control_)
            .cutBetween(corners(overlap.triangleA), corners(overlap.triangleB));
    }

    SeamDraft& draft_;
    RunControl& control_;
    tbb::enumerable_thread_specific<PatchTaker> takers_;
};

} // namespace

void splitOverlaps(SeamDraft& draft, RunControl& control)
{
    OverlapSplitter(draft, control).run();
}

} // namespace unfold3d
