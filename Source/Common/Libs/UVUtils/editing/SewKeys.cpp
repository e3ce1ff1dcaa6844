#include "UVUtils/editing/SewKeys.h"

#include "UVUtils/model/EdgeNumbers.h"
#include "UVUtils/model/SortFew.h"

#include <algorithm>
#include <utility>

namespace
{

MergeRecord makeRecord(unsigned int a, unsigned int b,
                       std::span<const unsigned int> representatives)
{
    const Edge key(representatives[a], representatives[b]);
    if (representatives[a] != key.first)
        std::swap(a, b);
    return {key, a, b};
}

/// The border edges by places, to ask whether there is one between two.
class BorderEdgeSet
{
public:
    BorderEdgeSet(std::span<const MergeRecord> borders, std::size_t vertexCount)
        : highersOf_(vertexCount, [&](const auto& add) {
              for (const MergeRecord& border : borders)
                  add(std::min(border.end0, border.end1), std::max(border.end0, border.end1));
          })
    {
        for (std::size_t lower = 0; lower < vertexCount; ++lower)
            sortFew(highersOf_[lower]);
    }

    bool contains(unsigned int a, unsigned int b) const
    {
        const auto highers = highersOf_[std::min(a, b)];
        return std::binary_search(highers.begin(), highers.end(), std::max(a, b));
    }

private:
    Buckets<unsigned int> highersOf_; ///< [place] the other ends of edges whose lower end it is
};

} // namespace

std::vector<MergeRecord> makeBorderRecords(std::span<const unsigned int> edges,
                                           const BorderVertices& vertices,
                                           std::span<const unsigned int> representatives)
{
    std::vector<MergeRecord> records;
    records.reserve(edges.size() / 2);
    for (std::size_t i = 0; i < edges.size(); i += 2)
        records.push_back(makeRecord(vertices.placeOf(edges[i]), vertices.placeOf(edges[i + 1]),
                                     representatives));
    return records;
}

std::vector<InteriorEdge> findInteriorEdges(std::span<const unsigned int> triangles,
                                            std::span<const MergeRecord> borders,
                                            const BorderVertices& vertices,
                                            std::span<const unsigned int> representatives)
{
    const BorderEdgeSet borderEdges(borders, vertices.size());
    std::vector<InteriorEdge> interiors;
    const auto consider = [&](unsigned int a, unsigned int b) {
        if (!vertices.contains(a) || !vertices.contains(b))
            return;
        const unsigned int placeOfA = vertices.placeOf(a);
        const unsigned int placeOfB = vertices.placeOf(b);
        if (!borderEdges.contains(placeOfA, placeOfB))
            interiors.push_back(
                {Edge(representatives[placeOfA], representatives[placeOfB]), Edge(a, b)});
    };
    const char* const onBorder = vertices.flags().data();
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const unsigned int* const corners = triangles.data() + i;
        if (onBorder[corners[0]] + onBorder[corners[1]] + onBorder[corners[2]] < 2)
            continue;
        consider(corners[0], corners[1]);
        consider(corners[1], corners[2]);
        consider(corners[0], corners[2]);
    }
    return interiors;
}

SewKeys numberKeys(std::span<const MergeRecord> borders, std::span<const MergeRecord> sewn,
                   std::span<const InteriorEdge> interiors)
{
    std::vector<Edge> keys;
    keys.reserve(borders.size() + sewn.size() + interiors.size());
    for (const auto& records : {borders, sewn})
        for (const MergeRecord& record : records)
            keys.push_back(record.key);
    for (const InteriorEdge& interior : interiors)
        keys.push_back(interior.key);
    const EdgeNumbers numbers = numberEdges(keys);
    const std::span numberOf(numbers.numberOf);
    const auto ofSewn = numberOf.subspan(borders.size(), sewn.size());
    const auto ofInteriors = numberOf.subspan(borders.size() + sewn.size());

    SewKeys result;
    result.keys.resize(numbers.count);
    for (std::size_t i = 0; i < keys.size(); ++i)
        result.keys[numberOf[i]] = keys[i];
    result.numberOfSewEdge.assign(ofSewn.begin(), ofSewn.end());
    result.bordersOfKey = Buckets<unsigned int>(numbers.count, [&](const auto& add) {
        for (unsigned int i = 0; i < borders.size(); ++i)
            add(numberOf[i], i);
    });
    result.interiorsOfKey = Buckets<Edge>(numbers.count, [&](const auto& add) {
        for (std::size_t i = 0; i < interiors.size(); ++i)
            add(ofInteriors[i], interiors[i].edge);
    });
    return result;
}
