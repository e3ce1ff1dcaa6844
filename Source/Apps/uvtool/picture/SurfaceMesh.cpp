#include "picture/SurfaceMesh.h"

#include "document/Transform.h"
#include "mesh/EdgeGroups.h"
#include "mesh/EqualValues.h"

#include <algorithm>

namespace uvtool
{
namespace
{

/// Adds the triangles of a geometry with their positions; returns the number of the first.
std::size_t addTriangles(const DocumentGeometry& geometry, std::uint32_t geometryNumber,
                         FirstUseNumbers<Vec3d, ValueHash>& numbers, SurfaceMesh& mesh)
{
    const std::size_t first = mesh.triangleCount();
    for (const std::uint32_t corner : geometry.triangles) {
        const Vec3d point = toScene(geometry.toWorld, geometry.positions.at(corner));
        const std::uint32_t number = numbers.of(point);
        if (number == mesh.points.size())
            mesh.points.push_back(point);
        mesh.triangles.push_back(number);
    }
    for (std::uint32_t t = 0; t < geometry.triangleCount(); ++t)
        mesh.source.push_back({geometryNumber, t});
    mesh.uvs.resize(mesh.triangles.size());
    mesh.island.resize(first + geometry.triangleCount(), -1);
    return first;
}

/// Where the side of a triangle begins and ends in the layout, from the lower point to the higher.
std::array<Vec2f, 2> uvsAlong(const SurfaceMesh& mesh, std::uint32_t side)
{
    const std::uint32_t end = endCorner(side);
    if (mesh.triangles[side] < mesh.triangles[end])
        return {mesh.uvs[side], mesh.uvs[end]};
    return {mesh.uvs[end], mesh.uvs[side]};
}

bool isSeam(const SurfaceMesh& mesh, std::span<const std::uint32_t> sides)
{
    if (sides.size() != 2)
        return true;
    return mesh.island[sides[0] / 3] != mesh.island[sides[1] / 3] ||
           uvsAlong(mesh, sides[0]) != uvsAlong(mesh, sides[1]);
}

} // namespace

SurfaceMesh surfaceOf(const Document& document, std::span<const std::size_t> geometries,
                      const DocumentLayout& layout)
{
    SurfaceMesh mesh;
    FirstUseNumbers<Vec3d, ValueHash> numbers(layout.sourceOfTriangle.size());
    std::vector<std::size_t> firstOfGeometry(document.geometries.size(), 0);
    for (const std::size_t number : geometries)
        firstOfGeometry[number] = addTriangles(document.geometries[number],
                                               static_cast<std::uint32_t>(number), numbers, mesh);
    for (std::size_t t = 0; t < layout.sourceOfTriangle.size(); ++t) {
        if (layout.islandOfTriangle[t] < 0)
            continue;
        const TriangleSource& source = layout.sourceOfTriangle[t];
        const std::size_t triangle = firstOfGeometry[source.geometry] + source.triangle;
        mesh.island[triangle] = layout.islandOfTriangle[t];
        for (std::size_t k = 0; k < 3; ++k)
            mesh.uvs[3 * triangle + k] = layout.uvs[layout.corners[3 * t + k]];
    }
    return mesh;
}

std::vector<std::uint32_t> seamsOf(const SurfaceMesh& mesh)
{
    const EdgeGroups edges(mesh.triangles, mesh.points.size());
    std::vector<std::uint32_t> seams;
    for (std::size_t e = 0; e < edges.size(); ++e) {
        if (!isSeam(mesh, edges[e]))
            continue;
        const std::uint32_t side = edges[e].front();
        seams.push_back(mesh.triangles[side]);
        seams.push_back(mesh.triangles[endCorner(side)]);
    }
    return seams;
}

} // namespace uvtool
