#include "mesh/SolverMesh.h"

#include "mesh/ClosedParts.h"
#include "mesh/EdgeGroups.h"

#include <algorithm>

namespace uvtool
{
namespace
{

bool hasUVs(const DocumentGeometry& geometry, std::size_t slot, std::size_t triangle)
{
    const std::uint32_t* const corner = geometry.triangles.data() + 3 * triangle;
    return std::all_of(corner, corner + 3,
                       [&](std::uint32_t c) { return geometry.uvs[slot].has(c); });
}

/// Renumbers the vertices of chosen triangles in order of first use.
template <class Chosen, class Source, class Corner>
SolverMesh takeTriangles(const std::vector<std::uint32_t>& triangles, std::size_t vertexCount,
                         const Chosen& isChosen, const Source& sourceOf, const Corner& cornerOf)
{
    SolverMesh taken;
    std::vector<std::uint32_t> newVertexOfOld(vertexCount, absentIndex);
    for (std::size_t t = 0; t < triangles.size() / 3; ++t) {
        if (!isChosen(t))
            continue;
        taken.sourceTriangle.push_back(sourceOf(t));
        for (std::size_t i = 3 * t; i < 3 * t + 3; ++i) {
            std::uint32_t& vertex = newVertexOfOld[triangles[i]];
            if (vertex == absentIndex) {
                vertex = static_cast<std::uint32_t>(taken.cornerOfVertex.size());
                taken.cornerOfVertex.push_back(cornerOf(i));
            }
            taken.triangles.push_back(vertex);
        }
    }
    return taken;
}

} // namespace

CornerVertices verticesFor(const DocumentGeometry& geometry, std::size_t slot, UVNeed need)
{
    return need == RegardlessOfUVs ? cornersOfSurface(geometry) : cornersByUV(geometry, slot);
}

SolverMesh buildSolverMesh(const DocumentGeometry& geometry, std::size_t slot, UVNeed need,
                           SolverMeshReport& report)
{
    const CornerVertices vertices = verticesFor(geometry, slot, need);
    std::vector<char> isChosen(geometry.triangleCount(), 1);
    for (std::size_t t = 0; t < geometry.triangleCount(); ++t) {
        const bool isDegenerate = repeatsVertex(vertices.vertexOfCorner, t);
        const bool isUnmapped = need == WithUVs && !hasUVs(geometry, slot, t);
        report.degenerateTriangles += isDegenerate ? 1U : 0U;
        report.unmappedTriangles += isUnmapped ? 1U : 0U;
        isChosen[t] = isDegenerate || isUnmapped ? 0 : 1;
    }
    SolverMesh mesh = takeTriangles(
        vertices.vertexOfCorner, vertices.vertexCount,
        [&](std::size_t t) { return isChosen[t] != 0; },
        [](std::size_t t) { return static_cast<std::uint32_t>(t); },
        [&](std::size_t i) { return geometry.triangles[i]; });

    std::size_t vertexCount = mesh.vertexCount();
    report.sheets = separateSheets(mesh.triangles, vertexCount);
    detachClosedParts(mesh.triangles, vertexCount);
    nameCorners(geometry, vertexCount, mesh);
    return mesh;
}

void nameCorners(const DocumentGeometry& geometry, std::size_t vertexCount, SolverMesh& mesh)
{
    mesh.cornerOfVertex.resize(vertexCount);
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
        mesh.cornerOfVertex[mesh.triangles[i]] =
            geometry.triangles[3 * std::size_t{mesh.sourceTriangle[i / 3]} + i % 3];
}

SolverMesh withoutIslands(const SolverMesh& mesh, const Islands& islands,
                          const std::vector<char>& isLeftOut)
{
    return takeTriangles(
        mesh.triangles, mesh.vertexCount(),
        [&](std::size_t t) {
            return isLeftOut[static_cast<std::size_t>(islands.ofTriangle[t])] == 0;
        },
        [&](std::size_t t) { return mesh.sourceTriangle[t]; },
        [&](std::size_t i) { return mesh.cornerOfVertex[mesh.triangles[i]]; });
}

} // namespace uvtool
