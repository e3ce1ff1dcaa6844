#include "mesh/CornerVertices.h"

#include "mesh/EqualValues.h"

#include <utility>

namespace uvtool
{
namespace
{

struct PairHash
{
    std::uint64_t operator()(const std::pair<std::uint32_t, std::uint32_t>& key) const
    {
        return mixBits((std::uint64_t{key.first} << 32U) | key.second);
    }
};

/// Splits the vertices so far where the corners of one differ in a further attribute.
template <class T>
void splitBy(const CornerAttribute<T>& attribute, const std::vector<std::uint32_t>& triangles,
             CornerVertices& vertices)
{
    if (!attribute.exists())
        return;
    const std::vector<std::uint32_t> numbers = numberEqualValues<T>(attribute.values);
    FirstUseNumbers<std::pair<std::uint32_t, std::uint32_t>, PairHash> split(vertices.vertexCount);
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const std::uint32_t corner = triangles[i];
        const std::uint32_t number =
            attribute.has(corner) ? numbers[attribute.ofCorner[corner]] : absentIndex;
        vertices.vertexOfCorner[i] = split.of({vertices.vertexOfCorner[i], number});
    }
    vertices.vertexCount = split.size();
}

/// Splits the vertices so far where corners name different values, equal or not.
void splitByNumber(const std::vector<std::uint32_t>& numberOfCorner,
                   const std::vector<std::uint32_t>& triangles, CornerVertices& vertices)
{
    FirstUseNumbers<std::pair<std::uint32_t, std::uint32_t>, PairHash> split(vertices.vertexCount);
    for (std::size_t i = 0; i < triangles.size(); ++i)
        vertices.vertexOfCorner[i] =
            split.of({vertices.vertexOfCorner[i], numberOfCorner[triangles[i]]});
    vertices.vertexCount = split.size();
}

bool hasRepeatedPositions(const CornerVertices& byNumber, const CornerVertices& byValue)
{
    std::vector<std::uint32_t> numberOfValue(byValue.vertexCount, absentIndex);
    for (std::size_t i = 0; i < byNumber.vertexOfCorner.size(); ++i) {
        std::uint32_t& number = numberOfValue[byValue.vertexOfCorner[i]];
        if (number == absentIndex)
            number = byNumber.vertexOfCorner[i];
        if (number != byNumber.vertexOfCorner[i])
            return true;
    }
    return false;
}

/// True when each position has one value of every other attribute, but not each place in space:
/// then positions are repeated so that they may differ in these.
bool isSplitByAttributes(const DocumentGeometry& geometry, const CornerVertices& byNumber,
                         const CornerVertices& byValue)
{
    const CornerVertices whole = distinctCorners(geometry);
    std::vector<std::uint32_t> wholeOfNumber(byNumber.vertexCount, absentIndex);
    std::vector<std::uint32_t> wholeOfValue(byValue.vertexCount, absentIndex);
    bool differs = false;
    for (std::size_t i = 0; i < whole.vertexOfCorner.size(); ++i) {
        std::uint32_t& ofNumber = wholeOfNumber[byNumber.vertexOfCorner[i]];
        std::uint32_t& ofValue = wholeOfValue[byValue.vertexOfCorner[i]];
        if (ofNumber == absentIndex)
            ofNumber = whole.vertexOfCorner[i];
        if (ofValue == absentIndex)
            ofValue = whole.vertexOfCorner[i];
        if (ofNumber != whole.vertexOfCorner[i])
            return false;
        differs = differs || ofValue != whole.vertexOfCorner[i];
    }
    return differs;
}

/// True when most triangles share no position with another.
bool isSoup(const CornerVertices& byNumber)
{
    std::vector<std::uint32_t> uses(byNumber.vertexCount, 0);
    for (const std::uint32_t vertex : byNumber.vertexOfCorner)
        ++uses[vertex];
    const std::size_t triangleCount = byNumber.vertexOfCorner.size() / 3;
    std::size_t alone = 0;
    for (std::size_t t = 0; t < triangleCount; ++t) {
        const std::uint32_t* const v = byNumber.vertexOfCorner.data() + 3 * t;
        alone += uses[v[0]] + uses[v[1]] + uses[v[2]] == 3 ? 1U : 0U;
    }
    return 2 * alone > triangleCount;
}

} // namespace

CornerVertices cornersByPositionNumber(const DocumentGeometry& geometry)
{
    CornerVertices vertices{{}, geometry.positions.values.size()};
    vertices.vertexOfCorner.reserve(geometry.triangles.size());
    for (const std::uint32_t corner : geometry.triangles)
        vertices.vertexOfCorner.push_back(geometry.positions.ofCorner[corner]);
    return vertices;
}

CornerVertices cornersByUVNumber(const DocumentGeometry& geometry, std::size_t slot)
{
    CornerVertices vertices = cornersByPositionNumber(geometry);
    if (geometry.uvs[slot].exists())
        splitByNumber(geometry.uvs[slot].ofCorner, geometry.triangles, vertices);
    return vertices;
}

bool isCutOpen(const DocumentGeometry& geometry)
{
    const CornerVertices byNumber = cornersByPositionNumber(geometry);
    const CornerVertices byValue = cornersByPosition(geometry);
    return hasRepeatedPositions(byNumber, byValue) && !isSoup(byNumber) &&
           !isSplitByAttributes(geometry, byNumber, byValue);
}

CornerVertices cornersByPosition(const DocumentGeometry& geometry)
{
    CornerVertices vertices{std::vector<std::uint32_t>(geometry.triangles.size(), 0), 1};
    splitBy(geometry.positions, geometry.triangles, vertices);
    return vertices;
}

CornerVertices cornersOfSurface(const DocumentGeometry& geometry)
{
    return isCutOpen(geometry) ? cornersByPositionNumber(geometry) : cornersByPosition(geometry);
}

CornerVertices cornersByUV(const DocumentGeometry& geometry, std::size_t slot)
{
    if (!geometry.uvs[slot].exists())
        return cornersOfSurface(geometry);
    CornerVertices vertices = cornersByPosition(geometry);
    splitBy(geometry.uvs[slot], geometry.triangles, vertices);
    return vertices;
}

CornerVertices distinctCorners(const DocumentGeometry& geometry)
{
    CornerVertices vertices = cornersByPosition(geometry);
    splitBy(geometry.normals, geometry.triangles, vertices);
    splitBy(geometry.colors, geometry.triangles, vertices);
    for (const CornerAttribute<Vec2f>& slot : geometry.uvs)
        splitBy(slot, geometry.triangles, vertices);
    if (geometry.keepsPositionsApart)
        splitByNumber(geometry.positions.ofCorner, geometry.triangles, vertices);
    return vertices;
}

} // namespace uvtool
