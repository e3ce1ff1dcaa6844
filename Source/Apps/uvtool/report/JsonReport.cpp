#include "report/JsonReport.h"

#include "report/TextReport.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace uvtool
{
namespace
{

using Json = nlohmann::ordered_json;

const char* wordFor(Outcome outcome)
{
    switch (outcome) {
    case Success:
        return "success";
    case Failure:
        return "failure";
    case Cancelled:
        return "cancelled";
    }
    return "";
}

Json placeJson(const TriangleSource& source)
{
    return {{"geometry", source.geometry}, {"triangle", source.triangle}};
}

Json finiteOrNull(double value)
{
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

/// Lengths of the gap and the margin, in UV units and, where the packing has a resolution, texels.
void addLength(Json& json, const std::string& name, bool exists, double length,
               std::optional<double> texelsPerUnit)
{
    json[name] = exists ? finiteOrNull(length) : Json(nullptr);
    if (texelsPerUnit)
        json[name + "Texels"] = exists ? finiteOrNull(length * *texelsPerUnit) : Json(nullptr);
}

Json boundsJson(const UVBox& bounds)
{
    return bounds.isEmpty() ? Json(nullptr)
                            : Json({bounds.lo[0], bounds.lo[1], bounds.hi[0], bounds.hi[1]});
}

Json checkJson(const CheckReport& report, std::optional<double> texelsPerUnit)
{
    const LayoutCheck& found = report.found;
    Json json;
    json["sound"] = found.isSound();
    json["triangles"] = found.triangles;
    json["islands"] = found.islands;
    Json first = Json::object();
    for (const CheckReport::Line& line : report.lines) {
        json[line.name] = line.count;
        if (!line.first)
            continue;
        first[line.name] = Json::array({placeJson(*line.first)});
        if (line.other)
            first[line.name].push_back(placeJson(*line.other));
    }
    json["mirroredIslands"] = found.mirroredIslands;
    json["outsideIslands"] = found.outside.count;
    json["countedAll"] = found.overlaps.countedAll;
    addLength(json, "gap", found.gap.exists(), found.gap.distance, texelsPerUnit);
    addLength(json, "margin", true, found.margin, texelsPerUnit);
    json["area"] = finiteOrNull(found.area);
    if (!found.bounds.isEmpty())
        json["bounds"] = boundsJson(found.bounds);
    json["first"] = first;
    return json;
}

Json islandsJson(const std::vector<KeptIsland>& islands)
{
    Json json = Json::array();
    for (const KeptIsland& island : islands)
        json.push_back({{"island", island.island},
                        {"triangles", island.triangles},
                        {"firstTriangle", island.firstTriangle}});
    return json;
}

Json islandListJson(const std::vector<SceneIslands::Island>& islands, bool listsSeeds)
{
    Json json = Json::array();
    for (std::size_t i = 0; i < islands.size(); ++i) {
        json.push_back({{"island", i},
                        {"triangles", islands[i].triangles},
                        {"vertices", islands[i].vertices},
                        {"borderEdges", islands[i].borderEdges}});
        if (listsSeeds)
            json.back()["seed"] = islands[i].seed;
    }
    return json;
}

/// What the solver has to work around.
void addSolverMesh(Json& json, const SolverMeshReport& mesh)
{
    json["degenerateTriangles"] = mesh.degenerateTriangles;
    json["unmappedTriangles"] = mesh.unmappedTriangles;
    json["separatedEdges"] = mesh.sheets.separatedEdges;
    json["doubledTriangles"] = mesh.sheets.doubledTriangles;
    json["detachedTriangles"] = mesh.sheets.detachedTriangles;
}

/// How a seam command left a geometry, and how it came to that.
void addSeams(Json& json, const GeometryReport& geometry, const Report& report)
{
    const SeamReport& seams = *geometry.seams;
    json["edges"] = {{"given", seams.givenEdges()},
                     {"used", seams.usedEdges},
                     {"unchanged", seams.unchangedEdges},
                     {"passedOver", seams.edgesPassedOver},
                     {"notInMesh", seams.edgesNotInMesh}};
    if (report.command != "sew")
        json["surfacesWithoutUVs"] = seams.surfacesWithoutUVs;
    json["undoChecked"] = seams.isUndoChecked;
    if (!geometry.result)
        return;
    json["after"] = {{"vertices", seams.vertices},
                     {"compactVertices", seams.compactVertices},
                     {"newVertices", static_cast<std::int64_t>(seams.compactVertices) -
                                         static_cast<std::int64_t>(*geometry.compactVertices)},
                     {"islands", seams.islands},
                     {"borderEdges", seams.borderEdges}};
}

Json foundSeamsJson(const FoundSeams& seams)
{
    return {{"mode", nameOfMode(seams.mode)},
            {"chosen", seams.isModeChosen},
            {"edges", seams.edges},
            {"length", seams.length},
            {"islands", seams.islands}};
}

Json qualityJson(const LayoutQuality& quality)
{
    return {{"energy", finiteOrNull(quality.distortion.energy())},
            {"angles", finiteOrNull(quality.distortion.angles())},
            {"flipped", quality.flipped},
            {"crossingsWithin", quality.crossings}};
}

Json measuresJson(const LayoutMeasures& measures)
{
    return {{"bounds", boundsJson(measures.bounds)},
            {"texelDensity", finiteOrNull(measures.texelDensity())},
            {"flipped", measures.flipped}};
}

void addLines(Json& json, const LineReport& lines)
{
    json["lines"] = {{"horizontalEdges", lines.horizontalEdges},
                     {"verticalEdges", lines.verticalEdges},
                     {"notInMesh", lines.notInMesh},
                     {"inBoth", lines.inBoth},
                     {"lines", lines.lines},
                     {"crooked", lines.crooked},
                     {"deviation", lines.deviation}};
}

Json repairJson(const RepairCounts& repair)
{
    return {{"degenerateTriangles", repair.degenerateTriangles},
            {"droppedPolygons", repair.droppedPolygons},
            {"singularVertices", repair.singularVertices},
            {"singularEdges", repair.singularEdges},
            {"singularUVs", repair.singularUVs},
            {"newVertices", repair.newVertices},
            {"newUVs", repair.newUVs},
            {"rounds", repair.rounds}};
}

Json projectionJson(const ProjectionReport& projection)
{
    Json json{{"kind", projection.kind}, {"up", projection.isZUp ? "z" : "y"}};
    Json& settings = json["settings"] = Json::object();
    for (const auto& [name, numbers] : projection.settings)
        settings[name] = numbers.size() == 1 ? Json(numbers.front()) : Json(numbers);
    if (!projection.mode.empty())
        settings["mode"] = projection.mode;
    return json;
}

Json projectedJson(const ProjectedCounts& projected)
{
    return {{"verticesBefore", projected.verticesBefore},
            {"vertices", projected.vertices},
            {"degenerateTriangles", projected.degenerateTriangles},
            {"trianglesWithoutAxis", projected.trianglesWithoutAxis}};
}

Json transferJson(const TransferReport& transfer)
{
    Json json{{"source", transfer.source},
              {"method", transfer.method},
              {"surfaces", transfer.surfaces},
              {"triangles", transfer.triangles}};
    Json& slots = json["slots"] = Json::array();
    for (const TransferReport::Slot& slot : transfer.slots)
        slots.push_back({{"slot", slot.slot},
                         {"islands", slot.islands},
                         {"borderEdges", slot.borderEdges},
                         {"unmappedTriangles", slot.unmappedTriangles}});
    return json;
}

Json transfersJson(const std::vector<TransferCounts>& transfers)
{
    Json json = Json::array();
    for (const TransferCounts& counts : transfers)
        json.push_back({{"slot", counts.slot},
                        {"islands", counts.islands},
                        {"borderEdges", counts.borderEdges},
                        {"newVertices", counts.newVertices},
                        {"trianglesWithoutUVs", counts.trianglesWithoutUVs},
                        {"distance", finiteOrNull(counts.distance)},
                        {"sourceGeometry",
                         counts.sourceGeometry ? Json(*counts.sourceGeometry) : Json(nullptr)}});
    return json;
}

/// Whether islands were laid out one by one, so that each may be done or kept.
bool hasDoneIslands(const GeometryReport& geometry)
{
    return !geometry.seams && !geometry.repair && !geometry.projected && geometry.transfers.empty();
}

Json geometryJson(const GeometryReport& geometry, const Report& report)
{
    Json json;
    json["geometry"] = geometry.number;
    json["name"] = geometry.name;
    json["shell"] = geometry.isShell;
    json["surfaces"] = geometry.surfaces;
    json["vertices"] = geometry.vertices;
    json["polygons"] = geometry.polygons;
    json["triangles"] = geometry.triangles;
    json["islands"] = geometry.islands;
    json["borderEdges"] = geometry.borderEdges;
    if (geometry.compactVertices)
        json["compactVertices"] = *geometry.compactVertices;
    json["slots"] = geometry.slots;
    if (geometry.mesh)
        addSolverMesh(json, *geometry.mesh);
    json["closedIslands"] = islandsJson(geometry.closedIslands);
    if (geometry.islandList)
        json["islandList"] = islandListJson(*geometry.islandList, report.listsSeeds);
    if (geometry.seams)
        addSeams(json, geometry, report);
    if (geometry.foundSeams)
        json["seams"] = foundSeamsJson(*geometry.foundSeams);
    if (geometry.path)
        json["path"] = {{"edges", geometry.path->pairs.size()},
                        {"length", finiteOrNull(geometry.path->length)},
                        {"pairs", geometry.path->pairs}};
    if (geometry.relax) {
        json["before"] = qualityJson(geometry.relax->before);
        json["after"] = qualityJson(geometry.relax->after);
    }
    if (geometry.edit) {
        json["before"] = measuresJson(geometry.edit->before);
        json["after"] = measuresJson(geometry.edit->after);
    }
    if (geometry.lines)
        addLines(json, *geometry.lines);
    if (geometry.repair)
        json["repair"] = repairJson(*geometry.repair);
    if (geometry.projected)
        json["projected"] = projectedJson(*geometry.projected);
    if (!geometry.transfers.empty())
        json["transfers"] = transfersJson(geometry.transfers);
    if (geometry.result) {
        json["result"] = wordFor(*geometry.result);
        if (hasDoneIslands(geometry)) {
            json["islandsDone"] = geometry.islandsDone;
            json["keptIslands"] = islandsJson(geometry.keptIslands);
        }
        if (geometry.distortion) {
            json["energy"] = finiteOrNull(geometry.distortion->energy());
            json["angles"] = finiteOrNull(geometry.distortion->angles());
        }
        json["splitPolygons"] = geometry.splitPolygons;
        json["seconds"] = geometry.seconds;
    }
    json["warnings"] = geometry.warnings;
    if (geometry.check)
        json["check"] = checkJson(*geometry.check, report.texelsPerUnit);
    return json;
}

} // namespace

std::string jsonReport(const Report& report)
{
    Json json;
    json["command"] = report.command;
    json["input"] = report.input;
    if (!report.output.empty())
        json["output"] = report.output;
    json["slot"] = report.slot;
    json["seconds"] = report.seconds;
    json["stages"] = Json::object();
    for (const auto& [name, seconds] : report.stages)
        json["stages"][name] = seconds;
    if (report.result)
        json["result"] = wordFor(*report.result);
    if (!report.error.empty())
        json["error"] = report.error;
    if (report.texelsPerUnit)
        json["texelsPerUnit"] = *report.texelsPerUnit;
    for (const PackingReport& packing : report.packings)
        json["packings"].push_back(
            {{"covered", packing.covered}, {"mostCovered", packing.mostCovered}});
    if (report.projection)
        json["projection"] = projectionJson(*report.projection);
    if (report.transfer)
        json["transfer"] = transferJson(*report.transfer);
    json["geometries"] = Json::array();
    for (const GeometryReport& geometry : report.geometries)
        json["geometries"].push_back(geometryJson(geometry, report));
    if (report.check)
        json["check"] = checkJson(*report.check, report.texelsPerUnit);
    json["warnings"] = report.warnings;
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace uvtool
