#include "report/CheckReport.h"

#include <array>

namespace uvtool
{
namespace
{

struct Kind
{
    const char* name;   ///< in reports
    const char* single; ///< in sentences
    const char* plural;
    bool isFault; ///< makes a layout unsound
};

constexpr std::array kinds{
    Kind{"nonFinite", "triangle with a coordinate that isn't finite",
         "triangles with coordinates that aren't finite", true},
    Kind{"degenerate", "triangle without an area", "triangles without an area", false},
    Kind{"flipped", "flipped triangle", "flipped triangles", true},
    Kind{"overlapsWithin", "border edge below its own island",
         "border edges below their own island", true},
    Kind{"overlapsBetween", "border edge below another island", "border edges below another island",
         true},
    Kind{"crossingsWithin", "crossing of an island's border with itself",
         "crossings of an island's border with itself", true},
    Kind{"crossingsBetween", "crossing of two islands' borders",
         "crossings of two islands' borders", true},
};

std::array<const Finding*, kinds.size()> findingsOf(const LayoutCheck& check)
{
    return {&check.nonFinite,
            &check.degenerate,
            &check.flipped,
            &check.overlaps.coveredWithin,
            &check.overlaps.coveredBetween,
            &check.overlaps.crossingsWithin,
            &check.overlaps.crossingsBetween};
}

std::string placeOf(const TriangleSource& source)
{
    return "triangle " + std::to_string(source.triangle) + " of geometry " +
           std::to_string(source.geometry);
}

} // namespace

CheckReport checkDocumentLayout(const DocumentLayout& layout, std::span<const UVBox> boxes)
{
    CheckReport report;
    report.found = checkLayout(layout, boxes);
    const auto findings = findingsOf(report.found);
    const auto sourceOf = [&layout](std::int64_t triangle) {
        return triangle < 0
                   ? std::nullopt
                   : std::optional(layout.sourceOfTriangle[static_cast<std::size_t>(triangle)]);
    };
    for (std::size_t k = 0; k < kinds.size(); ++k)
        report.lines.push_back({kinds[k].name, findings[k]->count, sourceOf(findings[k]->first),
                                sourceOf(findings[k]->other)});
    return report;
}

std::string unsoundness(const CheckReport& check)
{
    std::string text;
    for (std::size_t k = 0; k < kinds.size(); ++k) {
        const CheckReport::Line& line = check.lines[k];
        if (!kinds[k].isFault || line.count == 0)
            continue;
        text += (text.empty() ? "" : ", ") + std::to_string(line.count) + " " +
                (line.count == 1 ? kinds[k].single : kinds[k].plural);
        if (line.first)
            text += " (first: " + placeOf(*line.first) +
                    (line.other ? " and " + placeOf(*line.other) : "") + ")";
    }
    return text;
}

} // namespace uvtool
