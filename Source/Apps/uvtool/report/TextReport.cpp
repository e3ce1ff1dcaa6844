#include "report/TextReport.h"

#include "report/EditText.h"
#include "report/ProjectionText.h"
#include "report/RelaxText.h"
#include "report/Remarks.h"
#include "report/TransferText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>

namespace uvtool
{
namespace
{

/// A number with so many digits behind the point.
std::string decimal(double value, int digits)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", digits, value);
    return text.data();
}

/// A number with four digits that count, for lengths of any size.
std::string shortNumber(double value)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.4g", value);
    return text.data();
}

std::size_t triangleCount(const Report& report)
{
    std::size_t count = 0;
    for (const GeometryReport& geometry : report.geometries)
        count += geometry.triangles;
    return count;
}

std::string listOf(const std::vector<std::size_t>& numbers)
{
    std::string list;
    for (const std::size_t number : numbers)
        list += (list.empty() ? "" : ",") + std::to_string(number);
    return list.empty() ? "-" : list;
}

/// Rows of words as lines; the columns are as wide as their longest word and aligned to the right,
/// but for a last one of names.
enum LastColumn : std::int32_t
{
    Names,
    Numbers
};
std::vector<std::string> tableOf(const std::vector<std::vector<std::string>>& rows,
                                 LastColumn lastColumn)
{
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const auto& row : rows)
        for (std::size_t c = 0; c < row.size(); ++c)
            widths[c] = std::max(widths[c], row[c].size());
    std::vector<std::string> lines;
    for (const auto& row : rows) {
        std::string line;
        const std::size_t aligned = row.size() - (lastColumn == Names ? 1 : 0);
        for (std::size_t c = 0; c < aligned; ++c)
            line += std::string(2 + widths[c] - row[c].size(), ' ') + row[c];
        lines.push_back(lastColumn == Names ? line + "  " + row.back() : line);
    }
    return lines;
}

std::string nameIn(const GeometryReport& geometry)
{
    if (!geometry.isShell)
        return geometry.name;
    return geometry.name + ", a shell of " + counted(geometry.surfaces, "surface", "surfaces");
}

std::vector<std::string> tableOfGeometries(const Report& report)
{
    std::vector<std::vector<std::string>> rows{{"#", "vertices", "compact", "polygons", "triangles",
                                                "islands", "border edges", "slots", "name"}};
    for (const GeometryReport& geometry : report.geometries)
        rows.push_back({std::to_string(geometry.number), std::to_string(geometry.vertices),
                        std::to_string(geometry.compactVertices.value_or(0)),
                        std::to_string(geometry.polygons), std::to_string(geometry.triangles),
                        std::to_string(geometry.islands), std::to_string(geometry.borderEdges),
                        listOf(geometry.slots), nameIn(geometry)});
    return tableOf(rows, Names);
}

/// A row for each island of all geometries.
std::vector<std::string> tableOfIslands(const Report& report)
{
    std::vector<std::vector<std::string>> rows{
        {"#", "island", "triangles", "vertices", "border edges"}};
    if (report.listsSeeds)
        rows.front().emplace_back("seed");
    for (const GeometryReport& geometry : report.geometries)
        for (std::size_t i = 0; geometry.islandList && i < geometry.islandList->size(); ++i) {
            const SceneIslands::Island& island = (*geometry.islandList)[i];
            rows.push_back({std::to_string(geometry.number), std::to_string(i),
                            std::to_string(island.triangles), std::to_string(island.vertices),
                            std::to_string(island.borderEdges)});
            if (report.listsSeeds)
                rows.back().push_back(std::to_string(island.seed));
        }
    return tableOf(rows, Numbers);
}

std::string lineOnInput(const Report& report)
{
    return report.input + ": " + counted(report.geometries.size(), "geometry", "geometries") +
           ", " + counted(triangleCount(report), "triangle", "triangles");
}

/// "13 islands cover 0.61 of the UV plane".
std::string lineOnCover(const LayoutCheck& found)
{
    return counted(found.islands, "island covers ", "islands cover ") + shortNumber(found.area) +
           " of the UV plane";
}

/// The same with what is natural where an image is thrown onto front and back.
std::string lineOnProjection(const LayoutCheck& found)
{
    std::string line = lineOnCover(found);
    if (found.mirroredIslands > 0)
        line += ", " + std::to_string(found.mirroredIslands) + " mirrored";
    if (found.flipped.count > 0)
        line += ", with " +
                counted(found.flipped.count, "triangle turned over", "triangles turned over");
    return line;
}

/// The same with "smallest gap 2.0 texels".
std::string lineOnLayout(const LayoutCheck& found, std::optional<double> texelsPerUnit)
{
    std::string line = lineOnCover(found);
    if (found.gap.exists())
        line += ", smallest gap " +
                (texelsPerUnit ? decimal(found.gap.distance * *texelsPerUnit, 2) + " texels"
                               : shortNumber(found.gap.distance));
    if (found.mirroredIslands > 0)
        line += ", " + std::to_string(found.mirroredIslands) + " mirrored";
    return line;
}

std::string lineOnFaults(const CheckReport& check)
{
    const std::string faults = shortcomings(check, {});
    return faults.empty() ? "no flipped triangle, no overlap" : faults;
}

/// "288" or "288, now 304".
std::string change(std::size_t before, std::size_t after)
{
    return std::to_string(before) + (before == after ? "" : ", now " + std::to_string(after));
}

/// What a seam command did to all geometries together, with the counts before and after.
std::string lineOnSeams(const Report& report)
{
    SeamReport done;
    GeometryReport before;
    std::size_t compactVertices = 0;
    for (const GeometryReport& geometry : report.geometries) {
        done.usedEdges += geometry.seams->usedEdges;
        done.unchangedEdges += geometry.seams->unchangedEdges;
        done.compactVertices += geometry.seams->compactVertices;
        done.islands += geometry.seams->islands;
        done.borderEdges += geometry.seams->borderEdges;
        before.islands += geometry.islands;
        before.borderEdges += geometry.borderEdges;
        compactVertices += geometry.compactVertices.value_or(0);
    }
    return counted(done.usedEdges - done.unchangedEdges, "edge ", "edges ") +
           (report.command == "sew" ? "sewn" : "cut") +
           "; islands: " + change(before.islands, done.islands) +
           "; border edges: " + change(before.borderEdges, done.borderEdges) +
           "; vertices in UV: " + change(compactVertices, done.compactVertices);
}

/// Things of several kinds, those that there are: "32 singular vertices, 4 singular edges".
class CountedList
{
public:
    void add(std::size_t count, const char* single, const char* plural)
    {
        if (count > 0)
            text_ += (text_.empty() ? "" : ", ") + counted(count, single, plural);
    }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// "12 triangles without an area removed, with 4 whole faces; 32 singular vertices, 4 singular
/// edges repaired in 2 rounds; 34 new vertices".
std::string textOf(const RepairCounts& repair)
{
    std::string removed;
    if (repair.degenerateTriangles > 0)
        removed = counted(repair.degenerateTriangles, "triangle", "triangles") +
                  " without an area removed" +
                  (repair.droppedPolygons > 0 && repair.droppedPolygons < repair.degenerateTriangles
                       ? ", with " + counted(repair.droppedPolygons, "whole face", "whole faces")
                       : "") +
                  "; ";
    CountedList found;
    found.add(repair.singularVertices, "singular vertex", "singular vertices");
    found.add(repair.singularEdges, "singular edge", "singular edges");
    found.add(repair.singularUVs, "UV where charts touched", "UVs where charts touched");
    CountedList made;
    made.add(repair.newVertices, "new vertex", "new vertices");
    made.add(repair.newUVs, "new UV", "new UVs");
    if (made.text().empty())
        return removed + "nothing singular";
    return removed + found.text() + " repaired" +
           (repair.rounds > 1 ? " in " + std::to_string(repair.rounds) + " rounds" : "") + "; " +
           made.text();
}

/// What was repaired in all geometries together, and, where there are several, in each.
std::vector<std::string> textOfRepair(const Report& report)
{
    RepairCounts all;
    std::vector<std::string> lines;
    for (const GeometryReport& geometry : report.geometries) {
        if (!geometry.repair)
            continue;
        all += *geometry.repair;
        if (geometry.repair->changedAnything())
            lines.push_back("  geometry " + std::to_string(geometry.number) + " " +
                            nameIn(geometry) + ": " + textOf(*geometry.repair));
    }
    if (report.command != "repair")
        return {};
    if (report.geometries.size() == 1)
        lines.clear();
    lines.insert(lines.begin(), textOf(all));
    return lines;
}

/// "seams: 412 edges, 3.61 box diagonals; organic by the kind of the surface".
std::string lineOnSearch(const Report& report)
{
    std::size_t edges = 0;
    std::size_t searched = 0;
    double length = 0.0;
    std::map<std::string, std::size_t> countOfMode;
    for (const GeometryReport& geometry : report.geometries) {
        if (!geometry.foundSeams)
            continue;
        const FoundSeams& seams = *geometry.foundSeams;
        ++searched;
        edges += seams.edges;
        length += seams.length;
        ++countOfMode[std::string(nameOfMode(seams.mode)) +
                      (seams.isModeChosen ? " by the kind of the surface" : "")];
    }
    std::string line = "seams: " + counted(edges, "edge", "edges") + ", ";
    if (searched == 1)
        line += decimal(length, 2) + " box diagonals";
    for (const auto& [mode, count] : countOfMode)
        line += (line.ends_with(", ") ? "" : "; ") + mode +
                (searched == 1 ? "" : " in " + counted(count, "geometry", "geometries"));
    return line;
}

/// "distortion energy 4.086, 4 being none"; empty where nothing was laid out.
std::string lineOnDistortion(const Report& report)
{
    Distortion sum;
    for (const GeometryReport& geometry : report.geometries)
        sum += geometry.distortion.value_or(Distortion{});
    return sum.area > 0.0 ? "distortion energy " + decimal(sum.energy(), 3) + ", 4 being none" : "";
}

/// "0.784 of the tiles is covered; no layout of these islands covers more than 0.93".
std::string lineOnPacking(const PackingReport& packing)
{
    return decimal(packing.covered, 3) +
           " of the tiles is covered; no layout of these islands covers more than " +
           decimal(packing.mostCovered, 3);
}

std::string lineOnTime(const Report& report)
{
    std::string stages;
    for (const auto& [name, seconds] : report.stages)
        stages += (stages.empty() ? "" : ", ") + name + " " + decimal(seconds, 2);
    return decimal(report.seconds, 2) + " s (" + stages + ")";
}

} // namespace

std::vector<std::string> textOfInfo(const Report& report)
{
    std::vector<std::string> lines{lineOnInput(report)};
    for (std::string& line : tableOfGeometries(report))
        lines.push_back(std::move(line));
    if (report.check && report.check->found.triangles > 0) {
        lines.push_back("slot " + std::to_string(report.slot) + ": " +
                        lineOnLayout(report.check->found, {}));
        lines.push_back("  " + lineOnFaults(*report.check));
    } else {
        lines.push_back("slot " + std::to_string(report.slot) + ": no UVs");
    }
    for (std::string& remark : remarksOn(report))
        lines.push_back(std::move(remark));
    return lines;
}

std::vector<std::string> textOfIslands(const Report& report)
{
    std::vector<std::string> lines{lineOnInput(report)};
    for (std::string& line : tableOfGeometries(report))
        lines.push_back(std::move(line));
    for (std::string& line : tableOfIslands(report))
        lines.push_back(std::move(line));
    return lines;
}

std::string textOfPath(const PathReport& path)
{
    return "a path of " + counted(path.pairs.size(), "edge", "edges") + ", " +
           shortNumber(path.length) + " long";
}

std::vector<std::string> textOfResult(const Report& report)
{
    std::vector<std::string> lines;
    if (!report.geometries.empty() && report.geometries.front().seams)
        lines.push_back(lineOnSeams(report));
    if (std::any_of(report.geometries.begin(), report.geometries.end(),
                    [](const GeometryReport& geometry) { return geometry.foundSeams; }))
        lines.push_back(lineOnSearch(report));
    for (const auto& text : {textOfRepair(report), textOfRelaxing(report), textOfLines(report),
                             textOfProjection(report), textOfTransfer(report), textOfEdit(report)})
        lines.insert(lines.end(), text.begin(), text.end());
    if (report.check) {
        lines.push_back(report.projection
                            ? lineOnProjection(report.check->found)
                            : lineOnLayout(report.check->found, report.texelsPerUnit) + ", " +
                                  lineOnFaults(*report.check));
    }
    for (const PackingReport& packing : report.packings)
        lines.push_back(lineOnPacking(packing));
    const std::string distortion = lineOnDistortion(report);
    if (!distortion.empty())
        lines.push_back(distortion);
    lines.push_back(report.output + ": written in " + lineOnTime(report));
    return lines;
}

std::vector<std::string> textOfSeams(const Report& report)
{
    std::vector<std::string> lines{lineOnInput(report)};
    std::vector<std::vector<std::string>> rows{
        {"#", "seam edges", "box diagonals", "islands", "mode", "name"}};
    for (const GeometryReport& geometry : report.geometries) {
        const FoundSeams& seams = *geometry.foundSeams;
        rows.push_back({std::to_string(geometry.number), std::to_string(seams.edges),
                        decimal(seams.length, 2), std::to_string(seams.islands),
                        nameOfMode(seams.mode), nameIn(geometry)});
    }
    for (std::string& line : tableOf(rows, Names))
        lines.push_back(std::move(line));
    return lines;
}

const char* nameOfMode(kyUVTypes::SeamMode mode)
{
    switch (mode) {
    case kyUVTypes::Organic:
        return "organic";
    case kyUVTypes::Manufactured:
        return "manufactured";
    case kyUVTypes::Baking:
        return "baking";
    }
    return "";
}

} // namespace uvtool
