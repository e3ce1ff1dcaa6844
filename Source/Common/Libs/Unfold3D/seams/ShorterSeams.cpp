#include "Unfold3D/seams/ShorterSeams.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/seams/SeamBranches.h"

#include <algorithm>
#include <numeric>

namespace unfold3d
{

namespace
{

/// A new way has to be cheaper by this share.
constexpr double leastSaving = 0.01;
/// Vertices to search through in all.
constexpr double mostVisits = 1e7;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The vertices that seams and borders join to each other.
DisjointSets joinedByCuts(const SeamDraft& draft)
{
    const SeamMesh& mesh = draft.mesh;
    DisjointSets sets(mesh.vertexCount());
    for (int h = 0; h < 3 * mesh.triangleCount(); ++h)
        if (mesh.edgeOf[at(h)] < 0 || draft.isSeam[at(mesh.edgeOf[at(h)])])
            sets.join(mesh.originOf(h), mesh.targetOf(h));
    return sets;
}

class SeamShortener
{
public:
    SeamShortener(SeamDraft& draft, const RunControl& control)
        : draft_(draft), control_(control), paths_(draft.mesh, draft.pathCosts, draft.isSeam),
          allTriangles_(draft.mesh.triangles.size())
    {
        std::iota(allTriangles_.begin(), allTriangles_.end(), 0);
    }

    /// Goes through all branches once; after a change the later ones are found anew.
    void run()
    {
        std::vector<SeamBranch> branches = findBranches(draft_);
        const double visits = mostVisits / std::max(1, draft_.mesh.vertexCount());
        for (std::size_t i = 0; i < branches.size() && static_cast<double>(i) < visits; ++i)
            if (exchange(branches[i]))
                branches = findBranches(draft_);
    }

private:
    /// True when the branch took another way.
    bool exchange(const SeamBranch& branch)
    {
        draft_.set(branch.edges, false);
        DisjointSets sets = joinedByCuts(draft_);
        std::vector<int> better;
        // Where the ends hang together without it, the branch cuts a handle or parts patches.
        if (sets.find(branch.from) != sets.find(branch.to))
            better = cheapestWay(sets, branch);
        const bool pays = !better.empty() &&
                          draft_.costOf(better) < (1.0 - leastSaving) * draft_.costOf(branch.edges);
        draft_.set(pays ? better : branch.edges, true);
        return pays;
    }

    std::vector<int> cheapestWay(DisjointSets& sets, const SeamBranch& branch)
    {
        const int fromSet = sets.find(branch.from);
        const int toSet = sets.find(branch.to);
        std::vector<int> sources;
        std::vector<char> isGoal(draft_.mesh.positions.size(), 0);
        for (int v = 0; v < draft_.mesh.vertexCount(); ++v) {
            const int set = sets.find(v);
            if (set == fromSet)
                sources.push_back(v);
            isGoal[at(v)] = static_cast<char>(set == toSet);
        }
        paths_.refreshEnds(allTriangles_);
        const int end = paths_.searchNearest(sources, isGoal, control_);
        return end < 0 ? std::vector<int>() : paths_.pathTo(end);
    }

    SeamDraft& draft_;
    const RunControl& control_;
    CheapestPaths paths_;
    std::vector<int> allTriangles_;
};

} // namespace

void shortenSeams(SeamDraft& draft, const RunControl& control)
{
    SeamShortener(draft, control).run();
}

} // namespace unfold3d
