#include "report/Remarks.h"

#include "scene/TransferOperation.h"

#include <algorithm>
#include <map>

namespace uvtool
{
namespace
{

/// Places that a list names before it ends in a count.
constexpr std::size_t mostPlaces = 20;

std::string listOf(const std::vector<std::string>& places)
{
    std::string list;
    for (std::size_t i = 0; i < std::min(mostPlaces, places.size()); ++i)
        list += (i == 0 ? "" : ", ") + places[i];
    if (places.size() > mostPlaces)
        list += " and " + std::to_string(places.size() - mostPlaces) + " more";
    return list;
}

std::string nameOf(const GeometryReport& geometry)
{
    return "geometry " + std::to_string(geometry.number) + " \"" + geometry.name + "\"";
}

/// A number of each geometry that is of interest where it isn't 0.
struct Tally
{
    std::size_t total = 0;
    std::vector<std::string> places;
};

template <class Count>
Tally tallyOf(const Report& report, const Count& countIn)
{
    Tally tally;
    for (const GeometryReport& geometry : report.geometries) {
        const std::size_t count = countIn(geometry);
        tally.total += count;
        if (count > 0)
            tally.places.push_back(std::to_string(count) + " in " + nameOf(geometry));
    }
    return tally;
}

/// Islands, as "island 3 of geometry 0 "Wheel" (200 triangles, the first is 33)".
Tally tallyOf(const Report& report, std::vector<KeptIsland> GeometryReport::*islands)
{
    Tally tally;
    for (const GeometryReport& geometry : report.geometries) {
        tally.total += (geometry.*islands).size();
        for (const KeptIsland& island : geometry.*islands)
            tally.places.push_back("island " + std::to_string(island.island) + " of " +
                                   nameOf(geometry) + " (" +
                                   counted(island.triangles, "triangle", "triangles") +
                                   ", the first is " + std::to_string(island.firstTriangle) + ")");
    }
    return tally;
}

/// The same of what the solver works around, where a command tells that.
template <class Count>
Tally tallyOfMeshes(const Report& report, const Count& countIn)
{
    return tallyOf(report, [&countIn](const GeometryReport& geometry) {
        return geometry.mesh ? countIn(*geometry.mesh) : std::size_t{0};
    });
}

class Remarks
{
public:
    void add(const Tally& tally, const char* single, const char* plural)
    {
        if (tally.total > 0)
            lines.push_back(counted(tally.total, single, plural) + ": " + listOf(tally.places));
    }

    std::vector<std::string> lines;
};

void addIslands(const Report& report, Remarks& remarks)
{
    const Tally closed = tallyOf(report, &GeometryReport::closedIslands);
    if (report.command == "info")
        remarks.add(closed, "island is closed and can't be unfolded without seams",
                    "islands are closed and can't be unfolded without seams");
    else
        remarks.add(closed, "island is closed and keeps its UVs; seams would open it",
                    "islands are closed and keep their UVs; seams would open them");
    remarks.add(tallyOf(report, &GeometryReport::keptIslands),
                "island could not be unfolded and keeps its UVs",
                "islands could not be unfolded and keep their UVs");
}

void addMeshes(const Report& report, Remarks& remarks)
{
    remarks.add(
        tallyOfMeshes(report,
                      [](const SolverMeshReport& mesh) { return mesh.sheets.separatedEdges; }),
        "edge doesn't join two triangles of one winding, sheets are separate there",
        "edges don't join two triangles of one winding, sheets are separate there");
    remarks.add(tallyOfMeshes(
                    report, [](const SolverMeshReport& mesh) { return mesh.degenerateTriangles; }),
                "triangle with a repeated corner is left out",
                "triangles with a repeated corner are left out");
    remarks.add(
        tallyOfMeshes(report, [](const SolverMeshReport& mesh) { return mesh.unmappedTriangles; }),
        "triangle without UVs is left out", "triangles without UVs are left out");
    const bool isRepair = report.command == "repair";
    remarks.add(
        tallyOf(report, [](const GeometryReport& geometry) { return geometry.splitPolygons; }),
        isRepair ? "polygon came apart and is written as its triangles"
                 : "polygon is crossed by a seam and written as its triangles",
        isRepair ? "polygons came apart and are written as their triangles"
                 : "polygons are crossed by a seam and written as their triangles");
}

/// Surfaces whose UVs are no layout to use.
void addStartUVs(const Report& report, Remarks& remarks)
{
    if (report.output.empty())
        return;
    const Tally tally = tallyOf(report, [](const GeometryReport& geometry) {
        return geometry.seams ? geometry.seams->surfacesWithoutUVs : std::size_t{0};
    });
    if (report.command == "seams")
        remarks.add(
            tally,
            "surface has its positions for UVs now, cut along the seams; uvtool unfold makes "
            "a layout",
            "surfaces have their positions for UVs now, cut along the seams; uvtool unfold "
            "makes a layout");
    else
        remarks.add(
            tally,
            "surface had no UVs, its positions stand in for them; uvtool unfold makes a layout",
            "surfaces had no UVs, their positions stand in for them; uvtool unfold makes a layout");
}

/// Edges that a seam command could do nothing with.
void addSeams(const Report& report, Remarks& remarks)
{
    const auto tallyOfSeams = [&report](std::size_t SeamReport::*count) {
        return tallyOf(report, [count](const GeometryReport& geometry) {
            return geometry.seams ? *geometry.seams.*count : std::size_t{0};
        });
    };
    const bool isCut = report.command != "sew";
    remarks.add(tallyOfSeams(&SeamReport::edgesNotInMesh),
                "pair of vertices is no edge of the mesh",
                "pairs of vertices are no edges of the mesh");
    remarks.add(tallyOfSeams(&SeamReport::edgesPassedOver),
                isCut ? "edge is a border already" : "edge is no border",
                isCut ? "edges are borders already" : "edges are no borders");
    remarks.add(tallyOfSeams(&SeamReport::unchangedEdges),
                isCut ? "edge stays closed; a cut opens from a border, or where edges to cut meet"
                      : "edge stays open",
                isCut ? "edges stay closed; a cut opens from a border, or where edges to cut meet"
                      : "edges stay open");
    addStartUVs(report, remarks);
}

/// Triangles on which an image has no place.
void addProjected(const Report& report, Remarks& remarks)
{
    const auto tallyOfProjected = [&report](std::size_t ProjectedCounts::*count) {
        return tallyOf(report, [count](const GeometryReport& geometry) {
            return geometry.projected ? *geometry.projected.*count : std::size_t{0};
        });
    };
    remarks.add(tallyOfProjected(&ProjectedCounts::degenerateTriangles),
                "triangle has no area in the scene", "triangles have no area in the scene");
    remarks.add(tallyOfProjected(&ProjectedCounts::trianglesWithoutAxis),
                "triangle is too small to tell its sides and keeps the UV 0, 0; --mode dominant "
                "projects it",
                "triangles are too small to tell their sides and keep the UV 0, 0; --mode dominant "
                "projects them");
}

/// What can't have been meant to lie on one another.
bool isFarFromSource(const TransferCounts& counts, const TransferReport& transfer)
{
    return counts.distance > farAsShareOfSize * transfer.size;
}

void addTransfer(const Report& report, Remarks& remarks)
{
    if (!report.transfer)
        return;
    remarks.add(tallyOf(report,
                        [](const GeometryReport& geometry) {
                            std::size_t count = 0;
                            for (const TransferCounts& counts : geometry.transfers)
                                count += counts.trianglesWithoutUVs;
                            return count;
                        }),
                "triangle lies on a part of the source without UVs and keeps what it had",
                "triangles lie on parts of the source without UVs and keep what they had");
    for (const GeometryReport& geometry : report.geometries)
        if (!geometry.transfers.empty() &&
            isFarFromSource(geometry.transfers.front(), *report.transfer))
            remarks.lines.push_back(nameOf(geometry) + " lies off the source in places; are the "
                                                       "two of one shape, unit and place?");
}

/// The same warning about several geometries is one line.
void addWarnings(const Report& report, Remarks& remarks)
{
    std::vector<std::string> order;
    std::map<std::string, std::vector<std::string>> placesOfWarning;
    for (const GeometryReport& geometry : report.geometries)
        for (const std::string& warning : geometry.warnings) {
            std::vector<std::string>& places = placesOfWarning[warning];
            if (places.empty())
                order.push_back(warning);
            places.push_back(nameOf(geometry));
        }
    for (const std::string& warning : order)
        remarks.lines.push_back(listOf(placesOfWarning[warning]) + ": " + warning);
}

/// Other commands list or edit islands as they are, closed ones too.
bool isAboutLayouts(const Report& report)
{
    return report.command == "info" || report.command == "unfold" || report.command == "pack";
}

} // namespace

std::vector<std::string> remarksOn(const Report& report)
{
    Remarks remarks;
    if (isAboutLayouts(report))
        addIslands(report, remarks);
    addSeams(report, remarks);
    addMeshes(report, remarks);
    addProjected(report, remarks);
    addTransfer(report, remarks);
    addWarnings(report, remarks);
    return std::move(remarks.lines);
}

std::string counted(std::size_t count, const char* single, const char* plural)
{
    return std::to_string(count) + " " + (count == 1 ? single : plural);
}

} // namespace uvtool
