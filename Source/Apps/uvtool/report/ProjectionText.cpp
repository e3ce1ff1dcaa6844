#include "report/ProjectionText.h"

#include "report/Remarks.h"

#include <array>
#include <cstdio>

namespace uvtool
{
namespace
{

/// "planar: center 0 0 0, rotate 90 180 0, size 2 2".
std::string lineOnSettings(const ProjectionReport& projection)
{
    std::string line = projection.kind;
    const char* separator = ": ";
    for (const auto& [name, numbers] : projection.settings) {
        line += separator + name;
        separator = ", ";
        for (const double number : numbers) {
            std::array<char, 32> text{};
            std::snprintf(text.data(), text.size(), " %.6g", number + 0.0); // no minus zero
            line += text.data();
        }
    }
    return projection.mode.empty() ? line : line + ", mode " + projection.mode;
}

} // namespace

std::vector<std::string> textOfProjection(const Report& report)
{
    if (!report.projection)
        return {};
    ProjectedCounts all;
    for (const GeometryReport& geometry : report.geometries)
        all += geometry.projected.value_or(ProjectedCounts{});
    return {lineOnSettings(*report.projection),
            counted(all.vertices, "vertex", "vertices") + " in UV, " +
                std::to_string(all.verticesBefore) + " in space"};
}

} // namespace uvtool
