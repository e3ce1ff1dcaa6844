#include "UVUtils/model/BorderEdges.h"

#include "OpenSG/IndexSpan.h"
#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/SortFew.h"

#include <algorithm>

namespace
{

template <class Id>
Buckets<std::uint32_t> higherIdsByLower(std::span<const Id> triangles, std::size_t idCount)
{
    return {idCount, [&](const auto& add) {
                const auto addEdge = [&](std::uint32_t a, std::uint32_t b) {
                    add(std::min(a, b), std::max(a, b));
                };
                for (std::size_t i = 0; i < triangles.size(); i += 3) {
                    addEdge(triangles[i], triangles[i + 1]);
                    addEdge(triangles[i + 1], triangles[i + 2]);
                    addEdge(triangles[i + 2], triangles[i]);
                }
            }};
}

void appendSingles(std::uint32_t lower, std::span<std::uint32_t> highers, FlatEdgeList& edges)
{
    sortFew(highers);
    for (auto first = highers.begin(); first != highers.end();) {
        const auto end = std::find_if(first, highers.end(),
                                      [&](std::uint32_t higher) { return higher != *first; });
        if (end - first == 1)
            edges.insert(edges.end(), {lower, *first});
        first = end;
    }
}

template <class Id>
FlatEdgeList borderEdgesOfDense(std::span<const Id> triangles, std::size_t idCount)
{
    Buckets<std::uint32_t> highers = higherIdsByLower(triangles, idCount);
    FlatEdgeList edges;
    for (std::uint32_t lower = 0; lower < idCount; ++lower)
        appendSingles(lower, highers[lower], edges);
    return edges;
}

/// For few ids far apart, where a bucket for each number in between would be a waste.
template <class Id>
FlatEdgeList borderEdgesOfSparse(std::span<const Id> triangles)
{
    std::vector<std::uint32_t> ids(triangles.begin(), triangles.end());
    sortAndDropRepeats(ids);
    std::vector<std::uint32_t> places(triangles.size());
    std::transform(triangles.begin(), triangles.end(), places.begin(), [&](Id id) {
        return static_cast<std::uint32_t>(std::lower_bound(ids.begin(), ids.end(), id) -
                                          ids.begin());
    });
    FlatEdgeList edges = borderEdgesOfDense(std::span<const std::uint32_t>(places), ids.size());
    for (unsigned int& id : edges)
        id = ids[id];
    return edges;
}

template <class Id>
FlatEdgeList borderEdgesOf(std::span<const Id> triangles)
{
    constexpr std::size_t affordableIdsPerCorner = 8;
    triangles = triangles.first(triangles.size() - triangles.size() % 3);
    if (triangles.empty())
        return {};
    const std::size_t idCount =
        std::size_t{*std::max_element(triangles.begin(), triangles.end())} + 1;
    return idCount / affordableIdsPerCorner > triangles.size()
               ? borderEdgesOfSparse(triangles)
               : borderEdgesOfDense(triangles, idCount);
}

} // namespace

FlatEdgeList borderEdges(std::span<const std::uint32_t> triangles)
{
    return borderEdgesOf(triangles);
}

FlatEdgeList borderEdges(std::span<const std::uint16_t> triangles)
{
    return borderEdgesOf(triangles);
}

FlatEdgeList borderEdges(const osg::GeoIndicesPtr& indices)
{
    return osg::withIndices(indices, [](const auto triangles) { return borderEdges(triangles); });
}
