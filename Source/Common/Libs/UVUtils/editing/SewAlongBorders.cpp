// The sew of kyUVUtils on exactly one geometry: border edges that lie on top of each other are
// zipped together, and the vertices on both sides become one.

#include "UVUtils/editing/MergeVertices.h"
#include "UVUtils/editing/Representatives.h"
#include "UVUtils/editing/SewRecords.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>

namespace
{

using Pairs = std::span<const unsigned int>; // two ids an edge

/// The pairs of which both ids are what they must be.
template <class IsGood>
FlatEdgeList pairsOf(Pairs pairs, const IsGood& isGood)
{
    FlatEdgeList good;
    good.reserve(pairs.size());
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        if (isGood(pairs[i]) && isGood(pairs[i + 1]))
            good.insert(good.end(), {pairs[i], pairs[i + 1]});
    return good;
}

MergeGroups groupsToMerge(VertexGroups found, const BorderVertices& vertices)
{
    std::vector<unsigned int> merging; // groups with more than one vertex
    for (unsigned int group = 0; group < found.members.size(); ++group) {
        const auto members = found.members[group];
        std::sort(members.begin(), members.end());
        if (members.size() > 1)
            merging.push_back(group);
    }
    std::sort(merging.begin(), merging.end(), [&](unsigned int a, unsigned int b) {
        return found.members[a].front() < found.members[b].front();
    });
    return {merging.size(), [&](const auto& add) {
                for (unsigned int i = 0; i < merging.size(); ++i)
                    for (const unsigned int place : found.members[merging[i]])
                        add(i, vertices.idAt(place));
            }};
}

/// Decides which vertices become one; nothing is written but `unsewable`.
MergeGroups findMerges(const osg::GeometryPtr& geometry, const SewVertexLess& isLess,
                       Pairs allEdges, Pairs sewEdges, EdgeSet* unsewable)
{
    const unsigned int vertexCount = vertexCountOf(geometry);
    const IndexView indices(geometry->getIndices());
    const FlatEdgeList borderEdges =
        pairsOf(allEdges, [&](unsigned int id) { return id < vertexCount; });
    const BorderVertices vertices(borderEdges, vertexCount);
    const FlatEdgeList edgesToSew = pairsOf(
        sewEdges, [&](unsigned int id) { return id < vertexCount && vertices.contains(id); });

    const std::vector<unsigned int> representatives = findRepresentatives(vertices, isLess);
    const auto borders = makeBorderRecords(borderEdges, vertices, representatives);
    const auto sewn = makeBorderRecords(edgesToSew, vertices, representatives);
    const auto interiors =
        findInteriorEdges(indices.triangles(), borders, vertices, representatives);
    const SewKeys keys = numberKeys(borders, sewn, interiors);
    SewRecords sew = collectSewRecords(keys, borders, vertices, unsewable);
    blockFolds(keys, vertices.size(), sew, unsewable);
    return groupsToMerge(mergeVertexGroups(sew.records, sew.keyOfRecord, sew.useOfKey), vertices);
}

} // namespace

void kyUVUtils::doSewAlongBorders(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                                  const unsigned int* allEdges, unsigned int allCount,
                                  const unsigned int* sewEdges, unsigned int sewCount,
                                  bool matchUVs, TopologyOpOutData* out,
                                  std::unordered_set<Edge, EdgeHash>* unsewable)
{
    if (!allEdges || allCount == 0 || !sewEdges || sewCount == 0 || !geometry->getPositions() ||
        !geometry->getIndices())
        return;
    const MergeGroups groups = findMerges(geometry, SewVertexLess(*geometry, uvSet, matchUVs),
                                          {allEdges, allCount}, {sewEdges, sewCount}, unsewable);
    // Also when nothing merges: whoever asked for a record gets one, of what stayed as it was.
    averageUVs(geometry, uvSet, groups);
    removeMergedVertices(geometry, groups, out);
}
