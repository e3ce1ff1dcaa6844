#include "UVUtils/compactmesh/FaceTables.h"

#include "OpenSG/Prefetch.h"
#include "UVUtils/compactmesh/FaceTablesUpdate.h"
#include "UVUtils/compactmesh/SortedCorners.h"
#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/SortFew.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>
#include <utility>

namespace
{

/// A triangle and what orders it among those at its lowest vertex.
struct SortedFace
{
    unsigned int second, third; ///< compact ids
    unsigned int triangle;      ///< in surface order
    unsigned int corners;       ///< which corner each of the sorted ids is of; see SortedCorners
    friend auto operator<=>(const SortedFace&, const SortedFace&) = default;
};

/// An offset and what orders it among others.
struct SortedOffset
{
    unsigned int compactId;
    unsigned int offset;
    friend auto operator<=>(const SortedOffset&, const SortedOffset&) = default;
};

using FaceBuckets = Buckets<SortedFace>;

/// The triangles by their lowest compact id, in order there.
FaceBuckets sortFaces(std::span<const unsigned int> trianglesC, unsigned int compactCount)
{
    const auto triangleCount = static_cast<unsigned int>(trianglesC.size() / 3);
    FaceBuckets faces(compactCount, [&](const auto& add) {
        for (unsigned int t = 0; t < triangleCount; ++t) {
            const unsigned int* corners = trianglesC.data() + 3 * std::size_t{t};
            const SortedCorners sorted(corners[0], corners[1], corners[2]);
            add(sorted.id(0), SortedFace{sorted.id(1), sorted.id(2), t, sorted.corners()});
        }
    });
    for (std::size_t lowest = 0; lowest < faces.size(); ++lowest)
        sortFew(faces[lowest]);
    return faces;
}

void resizeTables(std::size_t faceCount, FaceTables& tables)
{
    tables.facesF.resize(3 * faceCount);
    tables.facesC.resize(3 * faceCount);
    tables.facesSortedF.resize(3 * faceCount);
    tables.faceMapping.resize(faceCount);
    tables.faceOrder012.resize(faceCount);
}

/// The triangles of surfaces lie far from where they go: theirs is most of the way in memory.
void prefetchFace(std::span<const unsigned int> trianglesF, std::span<const SortedFace> faces,
                  std::size_t k, const FaceTables& tables)
{
    if (k >= faces.size())
        return;
    osg::prefetch(trianglesF.data() + 3 * std::size_t{faces[k].triangle});
    osg::prefetch(tables.faceMapping.data() + faces[k].triangle);
}

/// Puts the triangles in their order; each is moved once.
void fillFaces(std::span<const unsigned int> trianglesF, const FaceBuckets& faces,
               FaceTables& tables)
{
    constexpr std::size_t lookAhead = 24;
    resizeTables(faces.items().size(), tables);
    unsigned int offset = 0;
    for (unsigned int lowest = 0; lowest < faces.size(); ++lowest)
        for (const SortedFace& face : faces[lowest]) {
            prefetchFace(trianglesF, faces.items(), offset / 3 + lookAhead, tables);
            const unsigned int* cornersF = trianglesF.data() + 3 * std::size_t{face.triangle};
            const std::array<unsigned int, 3> ids{lowest, face.second, face.third};
            for (unsigned int i = 0; i < 3; ++i) {
                const unsigned int corner = SortedCorners::cornerOf(face.corners, i);
                tables.facesF[offset + i] = cornersF[i];
                tables.facesC[offset + corner] = ids[i];
                tables.facesSortedF[offset + i] = cornersF[corner];
            }
            tables.faceMapping[face.triangle] = offset / 3;
            tables.faceOrder012[offset / 3] = offset;
            offset += 3;
        }
}

void appendOffsets(std::span<const SortedOffset> sorted, std::vector<unsigned int>& offsets)
{
    for (const SortedOffset& item : sorted)
        offsets.push_back(item.offset);
}

/// By first and third vertex: the order is there up to the first one.
void orderByFirstAndThird(const FaceBuckets& faces, std::vector<unsigned int>& offsets)
{
    offsets.clear();
    offsets.reserve(faces.items().size());
    std::vector<SortedOffset> atVertex;
    for (std::size_t first = 0; first < faces.size(); ++first) {
        atVertex.clear();
        auto offset = static_cast<unsigned int>(3 * offsets.size());
        for (const SortedFace& face : faces[first]) {
            atVertex.push_back({face.third, offset});
            offset += 3;
        }
        sortFew(std::span(atVertex));
        appendOffsets(atVertex, offsets);
    }
}

void orderBySecondAndThird(const FaceBuckets& faces, FaceTables& tables)
{
    Buckets<SortedOffset> atVertex(faces.size(), [&](const auto& add) {
        unsigned int offset = 0;
        for (const SortedFace& face : faces.items()) {
            add(face.second, SortedOffset{face.third, offset});
            offset += 3;
        }
    });
    for (std::size_t second = 0; second < atVertex.size(); ++second)
        sortFew(atVertex[second]);
    tables.faceOrder12.clear();
    tables.faceOrder12.reserve(faces.items().size());
    appendOffsets(atVertex.items(), tables.faceOrder12);
    tables.middleBegin.assign(atVertex.offsets().begin(), atVertex.offsets().end());
}

} // namespace

FaceTables makeFaceTables(std::span<const unsigned int> trianglesF,
                          std::span<const unsigned int> vertFToC, unsigned int compactCount,
                          FaceTables former)
{
    FaceTables tables = std::move(former);
    if (updateFaceTables(trianglesF, vertFToC, compactCount, tables))
        return tables;
    std::vector<unsigned int> trianglesC(trianglesF.size());
    std::transform(trianglesF.begin(), trianglesF.end(), trianglesC.begin(),
                   [&](unsigned int vertex) { return vertFToC[vertex]; });
    const FaceBuckets faces = sortFaces(trianglesC, compactCount);
    fillFaces(trianglesF, faces, tables);
    orderByFirstAndThird(faces, tables.faceOrder02);
    tables.lowestBegin.assign(faces.offsets().begin(), faces.offsets().end());
    orderBySecondAndThird(faces, tables);
    return tables;
}
