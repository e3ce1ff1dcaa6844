#include "report/Report.h"

#include "mesh/CornerVertices.h"

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

} // namespace

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

} // namespace uvtool
