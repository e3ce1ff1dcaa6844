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
    bool LayoutDemands::*demand; ///< by which it is a fault; null for one that always or never is
    bool isAlwaysFault = false;
};

constexpr std::array kinds{
    Kind{"nonFinite", "triangle with a coordinate that isn't finite",
         "triangles with coordinates that aren't finite", nullptr, true},
    Kind{"degenerate", "triangle without an area", "triangles without an area", nullptr},
    Kind{"flipped", "flipped triangle", "flipped triangles", &LayoutDemands::withoutFlips},
    Kind{"overlapsWithin", "border edge below its own island",
         "border edges below their own island", &LayoutDemands::withoutOverlapsWithin},
    Kind{"overlapsBetween", "border edge below another island", "border edges below another island",
         &LayoutDemands::withoutOverlapsBetween},
    Kind{"crossingsWithin", "crossing of an island's border with itself",
         "crossings of an island's border with itself", &LayoutDemands::withoutOverlapsWithin},
    Kind{"crossingsBetween", "crossing of two islands' borders",
         "crossings of two islands' borders", &LayoutDemands::withoutOverlapsBetween},
};

bool isFault(const Kind& kind, const LayoutDemands& demands)
{
    return kind.isAlwaysFault || (kind.demand != nullptr && demands.*kind.demand);
}

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

/// " (first: triangle 3 of geometry 0 and triangle 8 of geometry 1)"; empty without a place.
std::string placesOf(const CheckReport::Line& line)
{
    if (!line.first)
        return {};
    return " (first: " + placeOf(*line.first) + (line.other ? " and " + placeOf(*line.other) : "") +
           ")";
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

std::string shortcomings(const CheckReport& check, const LayoutDemands& demands)
{
    std::string text;
    const auto add = [&text](const std::string& what) {
        text += (text.empty() ? "" : ", ") + what;
    };
    for (std::size_t k = 0; k < kinds.size(); ++k) {
        const CheckReport::Line& line = check.lines[k];
        if (isFault(kinds[k], demands) && line.count > 0)
            add(std::to_string(line.count) + " " +
                (line.count == 1 ? kinds[k].single : kinds[k].plural) + placesOf(line));
    }
    const LayoutCheck& found = check.found;
    if (found.gap.exists() && found.gap.distance < demands.gap)
        add("a gap of " + std::to_string(found.gap.distance / demands.gap) +
            " times what was asked for");
    if (found.outside.count > 0)
        add(std::to_string(found.outside.count) + (found.outside.count == 1
                                                       ? " island outside its box"
                                                       : " islands outside their boxes"));
    else if (found.margin < demands.margin)
        add("a margin of " + std::to_string(found.margin / demands.margin) +
            " times what was asked for");
    return text;
}

} // namespace uvtool
