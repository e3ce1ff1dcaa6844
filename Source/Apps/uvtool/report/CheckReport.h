#pragma once

#include "check/LayoutCheck.h"
#include "layout/DocumentLayout.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// What the check found in a layout, with places that a user can look up.
struct CheckReport
{
    /// A kind of finding, under the name by which reports call it.
    struct Line
    {
        const char* name;
        std::size_t count;
        std::optional<TriangleSource> first;
        std::optional<TriangleSource> other; ///< of findings about two triangles
    };

    LayoutCheck found;
    std::vector<Line> lines; ///< all kinds about triangles, those with a count of 0 too
};

/// Checks a layout; `boxes` as in checkLayout.
CheckReport checkDocumentLayout(const DocumentLayout& layout, std::span<const UVBox> boxes = {});

/// What a layout has to be.
struct LayoutDemands
{
    bool withoutFlips = true;
    bool withoutOverlapsWithin = true; ///< and without borders that cross themselves
    bool withoutOverlapsBetween = true;
    double gap = 0.0;    ///< between islands, at least
    double margin = 0.0; ///< to the boxes that the check knew; nothing where it knew none
};

/// What a layout lacks, as half a sentence with counts and places: "3 flipped triangles (first:
/// triangle 17 of geometry 0)"; empty when it is as demanded. Values that aren't finite are never
/// allowed.
std::string shortcomings(const CheckReport& check, const LayoutDemands& demands);

} // namespace uvtool
