#include "UVUtils/compactmesh/FaceTablesUpdate.h"

#include "OpenSG/Prefetch.h"
#include "UVUtils/compactmesh/SortedCorners.h"
#include "UVUtils/model/NearlySorted.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <numeric>
#include <optional>

namespace
{

using Ids = std::vector<unsigned int>;

/// The triangle, in surface order, in each place of a mapping; none if it maps other triangles.
std::optional<Ids> trianglesByPlace(std::span<const unsigned int> faceMapping,
                                    std::size_t triangleCount)
{
    constexpr unsigned int none = ~0U;
    if (faceMapping.size() != triangleCount)
        return std::nullopt;
    Ids triangleAt(triangleCount, none);
    for (unsigned int triangle = 0; triangle < triangleCount; ++triangle) {
        const unsigned int k = faceMapping[triangle];
        if (k >= triangleCount || triangleAt[k] != none)
            return std::nullopt;
        triangleAt[k] = triangle;
    }
    return triangleAt;
}

/// The compact ids of the triangles, each in the place that it had.
Ids idsByPlace(std::span<const unsigned int> trianglesF, std::span<const unsigned int> vertFToC,
               const Ids& triangleAt)
{
    Ids ids;
    ids.reserve(trianglesF.size());
    for (const unsigned int triangle : triangleAt)
        for (const unsigned int vertex : trianglesF.subspan(3 * std::size_t{triangle}, 3))
            ids.push_back(vertFToC[vertex]);
    return ids;
}

/// Writes the F ids of the triangles anew, each in the place that it had, and how many there are at
/// a vertex; facesC is up to date.
void refill(std::span<const unsigned int> trianglesF, unsigned int compactCount,
            const Ids& triangleAt, FaceTables& tables)
{
    constexpr std::size_t lookAhead = 24; // the triangles lie far apart in surface order
    tables.lowestBegin.assign(std::size_t{compactCount} + 1, 0);
    tables.middleBegin.assign(std::size_t{compactCount} + 1, 0);
    for (std::size_t k = 0; k < triangleAt.size(); ++k) {
        if (k + lookAhead < triangleAt.size())
            osg::prefetch(trianglesF.data() + 3 * std::size_t{triangleAt[k + lookAhead]});
        const unsigned int* cornersF = trianglesF.data() + 3 * std::size_t{triangleAt[k]};
        const unsigned int* ids = tables.facesC.data() + 3 * k;
        const SortedCorners sorted(ids[0], ids[1], ids[2]);
        for (std::size_t i = 0; i < 3; ++i) {
            tables.facesF[3 * k + i] = cornersF[i];
            tables.facesSortedF[3 * k + i] = cornersF[sorted.corner(i)];
        }
        ++tables.lowestBegin[sorted.id(0) + 1];
        ++tables.middleBegin[sorted.id(1) + 1];
    }
    for (Ids* begins : {&tables.lowestBegin, &tables.middleBegin})
        std::partial_sum(begins->begin(), begins->end(), begins->begin());
}

/// What orders a triangle: ids in two halves of 64 bits, the more significant ones first.
struct FaceKey
{
    std::uint64_t upper, lower;
    friend auto operator<=>(const FaceKey&, const FaceKey&) = default;
};

std::uint64_t joined(unsigned int first, unsigned int second)
{
    return (std::uint64_t{first} << 32U) | second;
}

template <class Value>
void moveBlocks(std::span<const unsigned int> targets, const Ids& sourceOf, std::size_t blockSize,
                std::vector<Value>& values)
{
    std::vector<Value> moved;
    moved.reserve(targets.size() * blockSize);
    for (const unsigned int target : targets) {
        const Value* const block = values.data() + sourceOf[target] * blockSize;
        moved.insert(moved.end(), block, block + blockSize);
    }
    for (std::size_t i = 0; i < targets.size(); ++i)
        std::copy_n(moved.data() + i * blockSize, blockSize,
                    values.data() + targets[i] * blockSize);
}

/// Gives place k what is in place sourceOf[k]; most stay where they are.
void moveFaces(const Ids& sourceOf, Ids& triangleAt, FaceTables& tables)
{
    Ids targets;
    for (unsigned int k = 0; k < sourceOf.size(); ++k)
        if (sourceOf[k] != k)
            targets.push_back(k);
    for (Ids* corners : {&tables.facesF, &tables.facesC, &tables.facesSortedF})
        moveBlocks(targets, sourceOf, 3, *corners);
    moveBlocks(targets, sourceOf, 1, triangleAt);
    for (const unsigned int k : targets)
        tables.faceMapping[triangleAt[k]] = k;
}

} // namespace

bool updateFaceTables(std::span<const unsigned int> trianglesF,
                      std::span<const unsigned int> vertFToC, unsigned int compactCount,
                      FaceTables& tables)
{
    std::optional<Ids> triangleAt = trianglesByPlace(tables.faceMapping, trianglesF.size() / 3);
    if (!triangleAt || tables.facesF.size() != trianglesF.size())
        return false;
    if (tables.facesC.size() != trianglesF.size())
        tables.facesC = idsByPlace(trianglesF, vertFToC, *triangleAt);
    refill(trianglesF, compactCount, *triangleAt, tables);

    const auto idAt = [&](std::size_t offset) { return vertFToC[tables.facesSortedF[offset]]; };
    Ids sourceOf(triangleAt->size());
    std::iota(sourceOf.begin(), sourceOf.end(), 0U);
    const auto keyOfPlace = [&](unsigned int k) {
        const std::size_t offset = 3 * std::size_t{k};
        return FaceKey{joined(idAt(offset), idAt(offset + 1)),
                       joined(idAt(offset + 2), (*triangleAt)[k])};
    };
    if (!sortNearlySorted(sourceOf, keyOfPlace))
        return false;
    moveFaces(sourceOf, *triangleAt, tables);

    return sortNearlySorted(tables.faceOrder02,
                            [&](unsigned int offset) {
                                return FaceKey{joined(idAt(offset), idAt(offset + 2)), offset};
                            }) &&
           sortNearlySorted(tables.faceOrder12, [&](unsigned int offset) {
               return FaceKey{joined(idAt(offset + 1), idAt(offset + 2)), offset};
           });
}
