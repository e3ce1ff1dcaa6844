#include "scene/SceneIslands.h"

#include "scene/SceneEdges.h"
#include "solver/LibraryScope.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>

namespace uvtool
{
namespace
{

/// Has the library search; [compact vertex] the island of each.
std::vector<std::uint32_t> searchIslands(const SceneGeometry& scene, kyUVTypes::UVSet set,
                                         SceneIslands& found)
{
    std::vector<unsigned int> triangles;
    std::vector<unsigned int> triangleCounts;
    std::vector<unsigned int> vertices;
    std::vector<unsigned int> vertexCounts;
    kyUVUtils::findUVIslands(scene.core(), scene.node, set, nullptr, 0, false, triangles,
                             triangleCounts, vertices, vertexCounts);
    const std::vector<unsigned int> seeds = kyUVSelection::getIslandsSeeds(vertexCounts, vertices);

    std::vector<std::uint32_t> islandOfCompact(found.compactVertices, 0);
    auto next = vertices.begin();
    for (std::uint32_t i = 0; i < triangleCounts.size(); ++i) {
        found.islands.push_back(
            {triangleCounts[i] / 3, vertexCounts[i], 0, seeds[i], scene.triangleCount()});
        for (const auto end = next + vertexCounts[i]; next != end; ++next)
            islandOfCompact[found.compactOfVertex[*next]] = i;
    }
    return islandOfCompact;
}

void labelTriangles(const SceneGeometry& scene, const std::vector<std::uint32_t>& islandOfCompact,
                    SceneIslands& found)
{
    found.islandOfTriangle.reserve(scene.triangleCount());
    for (std::size_t t = 0; t < scene.triangleCount(); ++t) {
        const std::uint32_t island = islandOfCompact[found.compactOfVertex[scene.triangles[3 * t]]];
        found.islandOfTriangle.push_back(static_cast<std::int32_t>(island));
        std::size_t& first = found.islands[island].firstTriangle;
        first = std::min(first, t);
    }
}

/// Edges of triangles that name a compact vertex twice are passed over, as everywhere in the tool.
void countBorders(const SceneGeometry& scene, SceneIslands& found)
{
    const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
    for (std::size_t e = 0; e < edges.size(); ++e)
        if (edges.isBorder(e)) {
            const std::int32_t island = found.islandOfTriangle[edges.sides(e).front() / 3];
            ++found.islands[static_cast<std::size_t>(island)].borderEdges;
            ++found.borderEdges;
        }
}

void warnOfSurfaces(const Document& document, const SceneGeometry& scene, std::size_t slot,
                    std::vector<std::string>& warnings)
{
    std::size_t withoutUVs = 0;
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        const std::string& name = document.geometries[surface.number].name;
        if (!surface.fault.empty())
            warnings.push_back("surface " + std::to_string(surface.number) + " \"" + name +
                               "\" is passed over: " + surface.fault);
        withoutUVs += surface.hasUVs ? 0U : 1U;
    }
    if (withoutUVs == 0)
        return;
    const std::string where = "no UVs in slot " + std::to_string(slot);
    if (withoutUVs == scene.surfaces.size())
        warnings.push_back(where + ", its islands go by position alone");
    else
        warnings.push_back(std::to_string(withoutUVs) + " of " +
                           std::to_string(scene.surfaces.size()) + " surfaces have " + where +
                           " and are taken as if all of theirs were 0, 0");
}

} // namespace

SceneIslands findSceneIslands(const Document& document, const SceneGeometry& scene,
                              std::size_t slot, Console& console)
{
    SceneIslands found;
    warnOfSurfaces(document, scene, slot, found.warnings);
    const auto set = static_cast<kyUVTypes::UVSet>(slot);
    LibraryLog log;
    const LibraryScope scope(console, log);
    if (!kyUVUtils::isValidGeometry(scene.core(), scene.node, false))
        return found;
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(scene.core(), scene.node, set);
    if (mesh != nullptr) {
        found.compactOfVertex = mesh->getVertFToC();
        found.compactVertices = mesh->getGeomPtr()->getPositions()->getSize();
        labelTriangles(scene, searchIslands(scene, set, found), found);
        countBorders(scene, found);
    }
    return found;
}

DocumentLayout sceneLayout(const Document& document, const SceneGeometry& scene,
                           const SceneIslands& islands, std::size_t slot, ShownIslands shown)
{
    DocumentLayout layout;
    layout.uvs.resize(islands.compactVertices);
    layout.sourceOfTriangle = scene.sourceOfTriangle;
    layout.islandCount = static_cast<std::int32_t>(islands.islands.size());
    for (std::size_t t = 0; t < scene.triangleCount(); ++t) {
        const auto [number, triangle] = scene.sourceOfTriangle[t];
        const DocumentGeometry& geometry = document.geometries[number];
        bool isShown = true;
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t uv = islands.compactOfVertex[scene.triangles[3 * t + k]];
            const std::uint32_t corner = geometry.triangles[3 * std::size_t{triangle} + k];
            layout.corners.push_back(uv);
            if (geometry.uvs[slot].has(corner))
                layout.uvs[uv] = geometry.uvs[slot].at(corner);
            else
                isShown = false;
        }
        const std::int32_t island = islands.islandOfTriangle[t];
        if (shown == OpenIslands)
            isShown = isShown && islands.islands[static_cast<std::size_t>(island)].borderEdges > 0;
        layout.islandOfTriangle.push_back(isShown ? island : -1);
    }
    return layout;
}

} // namespace uvtool
