#include "Unfold3D/mesh/ClosedSheets.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/mesh/HalfEdges.h"

#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// [triangle]
std::vector<char> isInClosedSheet(const IslandMesh& mesh)
{
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    DisjointSets sheets(mesh.triangleCount());
    std::vector<int> openTriangles;
    for (int h = 0; h < static_cast<int>(edges.twin.size()); ++h)
        if (edges.isBorder(h))
            openTriangles.push_back(h / 3);
        else
            sheets.join(h / 3, edges.twin[at(h)] / 3);
    std::vector<char> isOpen(mesh.triangles.size(), 0);
    for (const int t : openTriangles)
        isOpen[at(sheets.find(t))] = 1;
    std::vector<char> isClosed(mesh.triangles.size());
    for (int t = 0; t < mesh.triangleCount(); ++t)
        isClosed[at(t)] = static_cast<char>(!isOpen[at(sheets.find(t))]);
    return isClosed;
}

/// [vertex] whether a triangle has it for which isIn [triangle] is this.
std::vector<char> verticesOf(const IslandMesh& mesh, const std::vector<char>& isIn, char which)
{
    std::vector<char> isOne(mesh.positions.size(), 0);
    for (std::size_t t = 0; t < isIn.size(); ++t)
        if (isIn[t] == which)
            for (const int v : mesh.triangles[t])
                isOne[at(v)] = 1;
    return isOne;
}

} // namespace

ClosedSheets leaveOutClosedSheets(IslandSurface& surface)
{
    const std::vector<char> isClosed = isInClosedSheet(surface.mesh);
    const std::vector<char> isOfClosed = verticesOf(surface.mesh, isClosed, 1);
    const std::vector<char> isOfOpen = verticesOf(surface.mesh, isClosed, 0);

    ClosedSheets closed;
    IslandSurface rest;
    std::vector<int> newOfOld(surface.vertices.size(), -1);
    for (std::size_t v = 0; v < newOfOld.size(); ++v) {
        if (!isOfOpen[v]) {
            closed.vertices.push_back(surface.vertices[v]);
            continue;
        }
        newOfOld[v] = static_cast<int>(rest.vertices.size());
        rest.vertices.push_back(surface.vertices[v]);
        rest.mesh.positions.push_back(surface.mesh.positions[v]);
        closed.isHinge.push_back(isOfClosed[v]);
    }
    for (std::size_t t = 0; t < isClosed.size(); ++t) {
        if (isClosed[t])
            continue;
        const auto& [a, b, c] = surface.mesh.triangles[t];
        rest.mesh.triangles.push_back({newOfOld[at(a)], newOfOld[at(b)], newOfOld[at(c)]});
        rest.triangles.push_back(surface.triangles[t]);
    }
    if (!rest.triangles.empty())
        rest.size = surface.size * normalise(rest.mesh);
    surface = std::move(rest);
    return closed;
}

} // namespace unfold3d
