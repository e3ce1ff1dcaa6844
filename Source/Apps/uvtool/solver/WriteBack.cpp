#include "solver/WriteBack.h"

#include "mesh/EdgeGroups.h"

#include <utility>

namespace uvtool
{
namespace
{

SlotValues valuesOfPart(const Part& part, const DocumentGeometry& geometry)
{
    SlotValues values{part.uvs, std::vector<std::uint32_t>(geometry.triangles.size(), absentIndex)};
    for (std::size_t i = 0; i < part.mesh.triangles.size(); ++i)
        values.ofTriangleCorner[3 * std::size_t{part.mesh.sourceTriangle[i / 3]} + i % 3] =
            part.mesh.triangles[i];
    return values;
}

/// Gives the corners of triangles with a repeated corner the value of a neighbour at that place.
void followNeighbours(const CornerVertices& before, SlotValues& values)
{
    std::vector<std::uint32_t> valueOfVertex(before.vertexCount, absentIndex);
    for (std::size_t i = 0; i < before.vertexOfCorner.size(); ++i) {
        std::uint32_t& value = valueOfVertex[before.vertexOfCorner[i]];
        if (value == absentIndex)
            value = values.ofTriangleCorner[i];
    }
    for (std::size_t i = 0; i < before.vertexOfCorner.size(); ++i)
        if (values.ofTriangleCorner[i] == absentIndex &&
            repeatsVertex(before.vertexOfCorner, i / 3))
            values.ofTriangleCorner[i] = valueOfVertex[before.vertexOfCorner[i]];
}

} // namespace

SlotValues valuesOf(const Part& part, const CornerVertices& before,
                    const DocumentGeometry& geometry)
{
    SlotValues values = valuesOfPart(part, geometry);
    followNeighbours(before, values);
    return values;
}

} // namespace uvtool
