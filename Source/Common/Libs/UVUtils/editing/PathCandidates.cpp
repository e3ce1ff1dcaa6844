#include "UVUtils/editing/PathCandidates.h"

#include "UVUtils/compactmesh/WeldKey.h"

#include <algorithm>

namespace
{

using Candidates = std::vector<PathCandidate>;

Candidates borderVerticesNear(unsigned int picked, const SeamTwins& twins)
{
    Candidates near;
    for (const unsigned int vertex : twins.borderVertices)
        if (isNear(twins.positions[vertex], twins.positions[picked]))
            near.push_back({vertex, twins.islandOfVertex[vertex]});
    return near;
}

/// Sorts by island and keeps the first of each.
void keepOneAnIsland(Candidates& candidates)
{
    std::stable_sort(
        candidates.begin(), candidates.end(),
        [](const PathCandidate& a, const PathCandidate& b) { return a.island < b.island; });
    candidates.erase(std::unique(candidates.begin(), candidates.end(),
                                 [](const PathCandidate& a, const PathCandidate& b) {
                                     return a.island == b.island;
                                 }),
                     candidates.end());
}

} // namespace

Candidates findPathCandidates(unsigned int picked, const SeamTwins& twins)
{
    const PathCandidate own{picked, twins.islandOfVertex[picked]};
    if (!std::binary_search(twins.borderVertices.begin(), twins.borderVertices.end(), picked))
        return {own};
    Candidates candidates = borderVerticesNear(picked, twins);
    keepOneAnIsland(candidates);
    for (PathCandidate& candidate : candidates)
        if (candidate.island == own.island)
            candidate = own;
    return candidates;
}

std::vector<PathEnds> findPathEnds(unsigned int from, unsigned int to, const SeamTwins& twins)
{
    if (twins.islandOfVertex[from] == twins.islandOfVertex[to])
        return {{from, to}};
    const Candidates starts = findPathCandidates(from, twins);
    const Candidates targets = findPathCandidates(to, twins);
    std::vector<PathEnds> ends;
    for (auto start = starts.begin(), target = targets.begin();
         start != starts.end() && target != targets.end();)
    {
        if (start->island == target->island)
            ends.push_back({start++->vertex, target++->vertex});
        else
            ++(start->island < target->island ? start : target);
    }
    return ends;
}
