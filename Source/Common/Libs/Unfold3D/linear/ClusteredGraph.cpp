#include "Unfold3D/linear/ClusteredGraph.h"

#include <numeric>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The number of the larger cluster for each, in the order of their first members.
std::vector<int> joinNeighbours(const VertexGraph& graph, int& count)
{
    std::vector<int> joinedOf(at(graph.size()), -1);
    count = 0;
    for (int seed = 0; seed < graph.size(); ++seed) {
        if (joinedOf[at(seed)] >= 0)
            continue;
        joinedOf[at(seed)] = count;
        for (const int neighbour : graph.of(seed))
            if (joinedOf[at(neighbour)] < 0)
                joinedOf[at(neighbour)] = count;
        ++count;
    }
    return joinedOf;
}

/// The members of each cluster, one after the other.
struct Members
{
    Members(const std::vector<int>& joinedOf, int count)
        : offsets(at(count) + 1, 0), members(joinedOf.size())
    {
        for (const int cluster : joinedOf)
            ++offsets[at(cluster) + 1];
        std::partial_sum(offsets.begin(), offsets.end(), offsets.begin());
        std::vector<int> next(offsets.begin(), offsets.end() - 1);
        for (std::size_t i = 0; i < joinedOf.size(); ++i)
            members[at(next[at(joinedOf[i])]++)] = static_cast<int>(i);
    }

    std::vector<int> offsets;
    std::vector<int> members;
};

VertexGraph graphOf(const VertexGraph& graph, const std::vector<int>& joinedOf, int count)
{
    const Members of(joinedOf, count);
    VertexGraph result;
    result.offsets.reserve(at(count) + 1);
    std::vector<int> lastSeenBy(at(count), -1);
    for (int cluster = 0; cluster < count; ++cluster) {
        lastSeenBy[at(cluster)] = cluster;
        for (int i = of.offsets[at(cluster)]; i < of.offsets[at(cluster) + 1]; ++i)
            for (const int neighbour : graph.of(of.members[at(i)])) {
                const int other = joinedOf[at(neighbour)];
                if (lastSeenBy[at(other)] == cluster)
                    continue;
                lastSeenBy[at(other)] = cluster;
                result.neighbours.push_back(other);
            }
        result.offsets.push_back(static_cast<int>(result.neighbours.size()));
    }
    return result;
}

} // namespace

ClusteredGraph clustersOfOne(const VertexGraph& graph)
{
    ClusteredGraph clusters{graph, std::vector<int>(at(graph.size()), 1),
                            std::vector<int>(at(graph.size()))};
    std::iota(clusters.ofNode.begin(), clusters.ofNode.end(), 0);
    return clusters;
}

ClusteredGraph joined(const ClusteredGraph& clusters)
{
    int count = 0;
    const std::vector<int> joinedOf = joinNeighbours(clusters.graph, count);
    ClusteredGraph result;
    result.graph = graphOf(clusters.graph, joinedOf, count);
    result.weight.assign(at(count), 0);
    for (std::size_t c = 0; c < joinedOf.size(); ++c)
        result.weight[at(joinedOf[c])] += clusters.weight[c];
    result.ofNode.reserve(clusters.ofNode.size());
    for (const int cluster : clusters.ofNode)
        result.ofNode.push_back(joinedOf[at(cluster)]);
    return result;
}

} // namespace unfold3d
