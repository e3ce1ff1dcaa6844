#include "commands/LineWork.h"

#include "cli/ExitStatus.h"
#include "report/Remarks.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace uvtool
{
namespace
{

/// Has the library told of lines that it could not make straight?
bool isWarned(const GeometryReport& entry)
{
    return std::any_of(entry.warnings.begin(), entry.warnings.end(),
                       [](const std::string& warning) {
                           return warning.find("constrained edges") != std::string::npos;
                       });
}

} // namespace

void noteStraightEdges(const StraightEdges& straight, const StraightOptions& options,
                       GeometryReport& entry)
{
    LineReport& lines = entry.lines.emplace();
    lines.horizontalEdges = straight.horizontal.size();
    lines.verticalEdges = straight.vertical.size();
    lines.notInMesh = straight.notInMesh;
    lines.inBoth = straight.inBoth;
    if (straight.isEmpty())
        throw CommandError(Failed, std::string(options.name()) +
                                       ": none of the pairs of vertices is an edge of geometry " +
                                       std::to_string(entry.number));
    if (straight.notInMesh > 0)
        entry.warnings.push_back(counted(straight.notInMesh,
                                         "pair of vertices is no edge of the mesh",
                                         "pairs of vertices are no edges of the mesh"));
    if (straight.inBoth > 0)
        entry.warnings.push_back(counted(straight.inBoth, "edge is", "edges are") +
                                 " in both files and held vertical");
}

void noteLines(const std::vector<HeldLine>& lines, const std::vector<char>& isChanged,
               GeometryReport& entry)
{
    LineReport& report = *entry.lines;
    report.lines = lines.size();
    const bool excusesAll = isWarned(entry);
    for (const HeldLine& line : lines) {
        if (line.isStraight()) {
            report.deviation = std::max(report.deviation, line.deviation);
            continue;
        }
        ++report.crooked;
        if (excusesAll || isChanged[static_cast<std::size_t>(line.island)] == 0)
            continue;
        std::array<char, 32> deviation{};
        std::snprintf(deviation.data(), deviation.size(), "%.2g", line.deviation);
        throw CommandError(Unsound, "the result failed its check, nothing was written: a line of "
                                    "edges of geometry " +
                                        std::to_string(entry.number) + " is off by " +
                                        deviation.data() + " of the size of the layout");
    }
}

} // namespace uvtool
