#include "UVUtils/compactmesh/FaceTables.h"

#include "UVUtils/model/Buckets.h"

#include <algorithm>
#include <array>
#include <compare>

namespace
{

using Corners = std::array<unsigned int, 3>;

/// What orders the triangles at one lowest vertex.
struct SortedFace
{
    unsigned int second = 0, third = 0; ///< compact ids
    unsigned int triangle = 0;          ///< in surface order
    friend auto operator<=>(const SortedFace&, const SortedFace&) = default;
};

/// An offset and what orders it among those of its bucket.
struct SortedOffset
{
    unsigned int compactId = 0;
    unsigned int offset = 0;
    friend auto operator<=>(const SortedOffset&, const SortedOffset&) = default;
};

using FaceBuckets = Buckets<SortedFace>;
using OffsetBuckets = Buckets<SortedOffset>;

template <class Item>
void sortEach(Buckets<Item>& buckets)
{
    for (std::size_t i = 0; i < buckets.size(); ++i)
        if (buckets[i].size() > 1)
            std::sort(buckets[i].begin(), buckets[i].end());
}

void sortThree(Corners& ids)
{
    if (ids[1] < ids[0])
        std::swap(ids[0], ids[1]);
    if (ids[2] < ids[1])
        std::swap(ids[1], ids[2]);
    if (ids[1] < ids[0])
        std::swap(ids[0], ids[1]);
}

/// The triangles by their lowest compact id, in order there.
FaceBuckets sortFaces(std::span<const unsigned int> trianglesF,
                      std::span<const unsigned int> vertFToC, unsigned int compactCount)
{
    const auto triangleCount = static_cast<unsigned int>(trianglesF.size() / 3);
    FaceBuckets faces(compactCount, [&](const auto& add) {
        for (unsigned int t = 0; t < triangleCount; ++t) {
            const unsigned int* corners = trianglesF.data() + 3 * std::size_t{t};
            Corners ids{vertFToC[corners[0]], vertFToC[corners[1]], vertFToC[corners[2]]};
            sortThree(ids);
            add(ids[0], SortedFace{ids[1], ids[2], t});
        }
    });
    sortEach(faces);
    return faces;
}

/// The F ids of a triangle ascending by compact id; equal ones keep their order.
Corners sortedByCompactId(const unsigned int* corners, std::span<const unsigned int> vertFToC)
{
    Corners sorted{corners[0], corners[1], corners[2]};
    const auto swapIfAfter = [&](unsigned int i) {
        if (vertFToC[sorted[i + 1]] < vertFToC[sorted[i]])
            std::swap(sorted[i], sorted[i + 1]);
    };
    swapIfAfter(0);
    swapIfAfter(1);
    swapIfAfter(0);
    return sorted;
}

/// Puts the triangles in their order; each is moved once.
void fillFaces(std::span<const unsigned int> trianglesF, std::span<const unsigned int> vertFToC,
               std::span<const SortedFace> faces, FaceTables& tables)
{
    tables.facesF.resize(3 * faces.size());
    tables.facesSortedF.resize(3 * faces.size());
    tables.faceMapping.resize(faces.size());
    tables.faceOrder012.resize(faces.size());
    for (std::size_t k = 0; k < faces.size(); ++k) {
        const unsigned int* corners = trianglesF.data() + 3 * std::size_t{faces[k].triangle};
        const Corners sorted = sortedByCompactId(corners, vertFToC);
        std::copy_n(corners, 3, tables.facesF.begin() + static_cast<std::ptrdiff_t>(3 * k));
        std::copy_n(sorted.begin(), 3,
                    tables.facesSortedF.begin() + static_cast<std::ptrdiff_t>(3 * k));
        tables.faceMapping[faces[k].triangle] = static_cast<unsigned int>(k);
        tables.faceOrder012[k] = static_cast<unsigned int>(3 * k);
    }
}

/// The offsets of all triangles, by a first and then a second compact id of each.
template <class FirstOf, class SecondOf>
std::vector<unsigned int> orderOffsets(std::size_t faceCount, std::size_t compactCount,
                                       const FirstOf& firstOf, const SecondOf& secondOf)
{
    OffsetBuckets buckets(compactCount, [&](const auto& add) {
        for (std::size_t k = 0; k < faceCount; ++k)
            add(firstOf(k), SortedOffset{secondOf(k), static_cast<unsigned int>(3 * k)});
    });
    sortEach(buckets);
    std::vector<unsigned int> offsets(faceCount);
    std::transform(buckets.items().begin(), buckets.items().end(), offsets.begin(),
                   [](const SortedOffset& item) { return item.offset; });
    return offsets;
}

} // namespace

FaceTables makeFaceTables(std::span<const unsigned int> trianglesF,
                          std::span<const unsigned int> vertFToC, unsigned int compactCount)
{
    const FaceBuckets buckets = sortFaces(trianglesF, vertFToC, compactCount);
    const std::span<const SortedFace> faces = buckets.items();
    FaceTables tables;
    fillFaces(trianglesF, vertFToC, faces, tables);
    const auto first = [&](std::size_t k) { return vertFToC[tables.facesSortedF[3 * k]]; };
    const auto second = [&](std::size_t k) { return faces[k].second; };
    const auto third = [&](std::size_t k) { return faces[k].third; };
    tables.faceOrder02 = orderOffsets(faces.size(), compactCount, first, third);
    tables.faceOrder12 = orderOffsets(faces.size(), compactCount, second, third);
    return tables;
}
