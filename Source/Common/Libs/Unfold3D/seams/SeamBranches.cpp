#include "Unfold3D/seams/SeamBranches.h"

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

class BranchFinder
{
public:
    explicit BranchFinder(const SeamDraft& draft)
        : draft_(draft), mesh_(draft.mesh), degree_(mesh_.positions.size(), 0),
          isKnot_(mesh_.isOnBorder), isDone_(draft.isSeam.size(), 0)
    {
        for (int e = 0; e < mesh_.edgeCount(); ++e)
            if (draft.isSeam[at(e)])
                for (const int v : mesh_.verticesOf(e)) {
                    ++degree_[at(v)];
                    if (!draft.mayGo[at(e)])
                        isKnot_[at(v)] = 1;
                }
        for (std::size_t v = 0; v < degree_.size(); ++v)
            if (degree_[v] != 2 || draft.isTip[v])
                isKnot_[v] = 1;
    }

    std::vector<SeamBranch> find()
    {
        std::vector<SeamBranch> branches;
        // Rings without a knot come last, from any of their vertices.
        for (const bool anyStart : {false, true})
            for (int v = 0; v < mesh_.vertexCount(); ++v) {
                if (!anyStart && !isKnot_[at(v)])
                    continue;
                for (const Spoke& spoke : mesh_.spokes[v])
                    if (draft_.mayGo[at(spoke.edge)] && !isDone_[at(spoke.edge)])
                        add(follow(v, spoke), branches);
            }
        return branches;
    }

private:
    SeamBranch follow(int start, Spoke spoke)
    {
        SeamBranch branch;
        branch.from = start;
        for (;;) {
            branch.edges.push_back(spoke.edge);
            isDone_[at(spoke.edge)] = 1;
            branch.to = spoke.vertex;
            if (isKnot_[at(branch.to)])
                return branch;
            bool goesOn = false;
            for (const Spoke& next : mesh_.spokes[branch.to])
                if (draft_.mayGo[at(next.edge)] && !isDone_[at(next.edge)]) {
                    spoke = next;
                    goesOn = true;
                    break;
                }
            if (!goesOn)
                return branch;
        }
    }

    bool isLooseEnd(int vertex) const
    {
        return degree_[at(vertex)] == 1 && !mesh_.isOnBorder[at(vertex)];
    }

    void add(SeamBranch branch, std::vector<SeamBranch>& branches) const
    {
        if (!isLooseEnd(branch.from) && isLooseEnd(branch.to)) {
            std::swap(branch.from, branch.to);
            branch.edges = {branch.edges.rbegin(), branch.edges.rend()};
        }
        branch.dangles = isLooseEnd(branch.from);
        branches.push_back(std::move(branch));
    }

    const SeamDraft& draft_;
    const SeamMesh& mesh_;
    std::vector<int> degree_;
    std::vector<char> isKnot_; ///< [vertex] branches end here
    std::vector<char> isDone_; ///< [edge]
};

} // namespace

std::vector<SeamBranch> findBranches(const SeamDraft& draft)
{
    return BranchFinder(draft).find();
}

} // namespace unfold3d
