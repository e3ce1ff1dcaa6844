#include "report/TransferText.h"

#include "report/Remarks.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace uvtool
{
namespace
{

/// A slot of all geometries together.
TransferCounts sumOf(const Report& report, std::size_t slot)
{
    TransferCounts sum;
    for (const GeometryReport& geometry : report.geometries)
        for (const TransferCounts& counts : geometry.transfers) {
            sum.distance = std::max(sum.distance, counts.distance);
            if (counts.slot != slot)
                continue;
            sum.islands += counts.islands;
            sum.borderEdges += counts.borderEdges;
            sum.newVertices += counts.newVertices;
        }
    return sum;
}

/// "slot 0: islands: 13 in the source, 14 now; border edges: ..., ...; 300 vertices added".
std::string lineOn(const TransferReport::Slot& source, const TransferCounts& now)
{
    const auto change = [](const char* what, std::size_t before, std::size_t after) {
        return std::string(what) + ": " + std::to_string(before) + " in the source, " +
               std::to_string(after) + " now; ";
    };
    return "slot " + std::to_string(source.slot) + ": " +
           change("islands", source.islands, now.islands) +
           change("border edges", source.borderEdges, now.borderEdges) +
           counted(now.newVertices, "vertex split off along seams",
                   "vertices split off along seams");
}

/// ", 3 geometries from those of their names" where any were.
std::string noteOnNames(const Report& report)
{
    const auto count = static_cast<std::size_t>(std::count_if(
        report.geometries.begin(), report.geometries.end(), [](const GeometryReport& geometry) {
            return !geometry.transfers.empty() && geometry.transfers.front().sourceGeometry;
        }));
    return count == 0 ? ""
                      : ", " + counted(count, "geometry from the one of its name",
                                       "geometries from those of their names");
}

/// "middles of triangles are up to 0.003 from the source, 0.2 % of its size".
std::string lineOnDistance(double distance, double size)
{
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(),
                  "middles of triangles are up to %.3g from the source, %.2g %% of its size",
                  distance, size > 0.0 ? 100.0 * distance / size : 0.0);
    return text.data();
}

} // namespace

std::vector<std::string> textOfTransfer(const Report& report)
{
    if (!report.transfer)
        return {};
    const TransferReport& transfer = *report.transfer;
    std::vector<std::string> lines{transfer.source + ": " +
                                   counted(transfer.surfaces, "geometry", "geometries") + ", " +
                                   counted(transfer.triangles, "triangle", "triangles") +
                                   "; method " + transfer.method + noteOnNames(report)};
    double distance = 0.0;
    for (const TransferReport::Slot& slot : transfer.slots) {
        const TransferCounts now = sumOf(report, slot.slot);
        distance = std::max(distance, now.distance);
        lines.push_back(lineOn(slot, now));
    }
    if (!transfer.slots.empty())
        lines.push_back(lineOnDistance(distance, transfer.size));
    return lines;
}

} // namespace uvtool
