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

} // namespace

CornerVertices cornersByPosition(const DocumentGeometry& geometry)
{
    CornerVertices vertices{std::vector<std::uint32_t>(geometry.triangles.size(), 0), 1};
    splitBy(geometry.positions, geometry.triangles, vertices);
    return vertices;
}

CornerVertices cornersByUV(const DocumentGeometry& geometry, std::size_t slot)
{
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
    return vertices;
}

} // namespace uvtool
