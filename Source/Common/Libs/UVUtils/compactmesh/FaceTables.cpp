#include "UVUtils/compactmesh/FaceTables.h"

#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/SortFew.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>

// Branches on the order of three corners are a toss-up, so that sorting them goes by minimum and
// maximum throughout.

namespace
{

/// What orders the triangles at one lowest vertex.
struct SortedFace
{
    unsigned int second, third; ///< compact ids
    unsigned int triangle;      ///< in surface order
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

template <class Number>
void sortThree(std::array<Number, 3>& numbers)
{
    const auto sortTwo = [&](std::size_t a, std::size_t b) {
        const Number low = std::min(numbers[a], numbers[b]);
        numbers[b] = std::max(numbers[a], numbers[b]);
        numbers[a] = low;
    };
    sortTwo(0, 1);
    sortTwo(1, 2);
    sortTwo(0, 1);
}

/// The triangles by their lowest compact id, in order there.
FaceBuckets sortFaces(std::span<const unsigned int> trianglesF,
                      std::span<const unsigned int> vertFToC, unsigned int compactCount)
{
    const auto triangleCount = static_cast<unsigned int>(trianglesF.size() / 3);
    FaceBuckets faces(compactCount, [&](const auto& add) {
        for (unsigned int t = 0; t < triangleCount; ++t) {
            const unsigned int* corners = trianglesF.data() + 3 * std::size_t{t};
            std::array<unsigned int, 3> ids{vertFToC[corners[0]], vertFToC[corners[1]],
                                            vertFToC[corners[2]]};
            sortThree(ids);
            add(ids[0], SortedFace{ids[1], ids[2], t});
        }
    });
    for (std::size_t lowest = 0; lowest < faces.size(); ++lowest)
        sortFew(faces[lowest]);
    return faces;
}

/// Puts the triangles in their order; each is moved once.
void fillFaces(std::span<const unsigned int> trianglesF, std::span<const unsigned int> vertFToC,
               std::span<const SortedFace> faces, FaceTables& tables)
{
    tables.facesF.resize(3 * faces.size());
    tables.facesC.resize(3 * faces.size());
    tables.facesSortedF.resize(3 * faces.size());
    tables.faceMapping.resize(faces.size());
    tables.faceOrder012.resize(faces.size());
    for (std::size_t k = 0; k < faces.size(); ++k) {
        const unsigned int* corners = trianglesF.data() + 3 * std::size_t{faces[k].triangle};
        std::array<std::uint64_t, 3> sorted; // compact id above, F id below
        for (std::size_t i = 0; i < 3; ++i) {
            const unsigned int compactId = vertFToC[corners[i]];
            tables.facesF[3 * k + i] = corners[i];
            tables.facesC[3 * k + i] = compactId;
            sorted[i] = (std::uint64_t{compactId} << 32U) | corners[i];
        }
        sortThree(sorted);
        for (std::size_t i = 0; i < 3; ++i)
            tables.facesSortedF[3 * k + i] = static_cast<unsigned int>(sorted[i]);
        tables.faceMapping[faces[k].triangle] = static_cast<unsigned int>(k);
        tables.faceOrder012[k] = static_cast<unsigned int>(3 * k);
    }
}

void appendOffsets(std::span<const SortedOffset> sorted, std::vector<unsigned int>& offsets)
{
    for (const SortedOffset& item : sorted)
        offsets.push_back(item.offset);
}

/// By first and third vertex: the order is there up to the first one.
std::vector<unsigned int> orderByFirstAndThird(const FaceBuckets& faces)
{
    std::vector<unsigned int> offsets;
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
    return offsets;
}

std::vector<unsigned int> orderBySecondAndThird(const FaceBuckets& faces)
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
    std::vector<unsigned int> offsets;
    offsets.reserve(faces.items().size());
    appendOffsets(atVertex.items(), offsets);
    return offsets;
}

} // namespace

FaceTables makeFaceTables(std::span<const unsigned int> trianglesF,
                          std::span<const unsigned int> vertFToC, unsigned int compactCount)
{
    const FaceBuckets faces = sortFaces(trianglesF, vertFToC, compactCount);
    FaceTables tables;
    fillFaces(trianglesF, vertFToC, faces.items(), tables);
    tables.faceOrder02 = orderByFirstAndThird(faces);
    tables.faceOrder12 = orderBySecondAndThird(faces);
    return tables;
}
