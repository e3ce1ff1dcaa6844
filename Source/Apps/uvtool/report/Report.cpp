#include "report/Report.h"

#include "mesh/CornerVertices.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace uvtool
{
namespace
{

std::vector<std::size_t> slotsInUse(const DocumentGeometry& geometry)
{
    std::vector<std::size_t> slots;
    for (std::size_t slot = 0; slot < slotCount; ++slot)
        if (geometry.uvs[slot].exists())
            slots.push_back(slot);
    return slots;
}

std::vector<KeptIsland> closedIslandsOf(const SceneIslands& found)
{
    std::vector<KeptIsland> closed;
    for (std::size_t i = 0; i < found.islands.size(); ++i)
        if (found.islands[i].borderEdges == 0)
            closed.push_back({i, found.islands[i].triangles, found.islands[i].firstTriangle});
    return closed;
}

} // namespace

void addSlots(const DocumentGeometry& geometry, std::vector<std::size_t>& slots)
{
    std::vector<std::size_t> all;
    const std::vector<std::size_t> own = slotsInUse(geometry);
    std::set_union(slots.begin(), slots.end(), own.begin(), own.end(), std::back_inserter(all));
    slots = std::move(all);
}

std::vector<KeptIsland> islandsThat(const Survey& survey, const std::vector<char>& isWanted)
{
    std::vector<KeptIsland> entryOfIsland(survey.islands.count());
    for (std::size_t t = survey.mesh.triangleCount(); t-- > 0;) {
        KeptIsland& entry = entryOfIsland[static_cast<std::size_t>(survey.islands.ofTriangle[t])];
        ++entry.triangles;
        entry.firstTriangle = survey.mesh.sourceTriangle[t];
    }
    std::vector<KeptIsland> wanted;
    for (std::size_t i = 0; i < entryOfIsland.size(); ++i) {
        if (isWanted[i] == 0)
            continue;
        entryOfIsland[i].island = i;
        wanted.push_back(entryOfIsland[i]);
    }
    return wanted;
}

GeometryReport describe(const DocumentGeometry& geometry, std::size_t number, const Survey& survey)
{
    GeometryReport report;
    report.number = number;
    report.name = geometry.name;
    report.vertices = distinctCorners(geometry).vertexCount;
    report.polygons = geometry.polygonCount();
    report.triangles = geometry.triangleCount();
    report.islands = survey.islands.count();
    report.borderEdges = survey.islands.borderEdges;
    report.mesh = survey.report;
    report.slots = slotsInUse(geometry);
    report.closedIslands = islandsThat(survey, survey.islands.isClosed);
    return report;
}

GeometryReport describe(const Document& document, const SceneGeometry& scene,
                        const SceneIslands& found)
{
    GeometryReport report;
    report.isShell = scene.isShell;
    report.surfaces = scene.surfaces.size();
    if (scene.isShell) {
        report.name = document.path.stem().string();
    } else {
        report.number = scene.surfaces.front().number;
        report.name = document.geometries[report.number].name;
    }
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        const DocumentGeometry& geometry = document.geometries[surface.number];
        report.polygons += geometry.polygonCount();
        addSlots(geometry, report.slots);
    }
    report.vertices = scene.vertexCount;
    report.triangles = scene.triangleCount();
    report.islands = found.islands.size();
    report.borderEdges = found.borderEdges;
    report.compactVertices = found.compactVertices;
    report.closedIslands = closedIslandsOf(found);
    report.islandList = found.islands;
    report.warnings = found.warnings;
    return report;
}

} // namespace uvtool
