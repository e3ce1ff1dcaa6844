#include "report/RelaxText.h"

#include "report/Remarks.h"

#include <array>
#include <cstdio>

namespace uvtool
{
namespace
{

LayoutQuality& operator+=(LayoutQuality& sum, const LayoutQuality& other)
{
    sum.distortion += other.distortion;
    sum.flipped += other.flipped;
    sum.crossings += other.crossings;
    return sum;
}

/// "4.831, now 4.012".
std::string change(double before, double after)
{
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%.4g, now %.4g", before, after);
    return text.data();
}

std::string change(std::size_t before, std::size_t after)
{
    return std::to_string(before) + (before == after ? "" : ", now " + std::to_string(after));
}

} // namespace

std::vector<std::string> textOfRelaxing(const Report& report)
{
    RelaxReport all;
    std::size_t islands = 0;
    bool isRelaxed = false;
    for (const GeometryReport& geometry : report.geometries) {
        if (!geometry.relax)
            continue;
        islands += geometry.islands;
        isRelaxed = true;
        all.before += geometry.relax->before;
        all.after += geometry.relax->after;
        all.islandsMoved += geometry.relax->islandsMoved;
    }
    if (!isRelaxed)
        return {};
    const Distortion& before = all.before.distortion;
    const Distortion& after = all.after.distortion;
    return {std::to_string(all.islandsMoved) + " of " + counted(islands, "island", "islands") +
            " changed; energy: " + change(before.energy(), after.energy()) +
            "; angles: " + change(before.angles(), after.angles()) +
            "; flipped triangles: " + change(all.before.flipped, all.after.flipped) +
            "; crossings within islands: " + change(all.before.crossings, all.after.crossings)};
}

std::vector<std::string> textOfLines(const Report& report)
{
    for (const GeometryReport& geometry : report.geometries)
        if (geometry.lines) {
            const LineReport& lines = *geometry.lines;
            std::array<char, 64> deviation{};
            std::snprintf(deviation.data(), deviation.size(), "%.2g", lines.deviation);
            return {std::to_string(lines.lines - lines.crooked) + " of " +
                    counted(lines.lines, "line", "lines") + " straight, to " + deviation.data() +
                    " of the size of the layout"};
        }
    return {};
}

} // namespace uvtool
