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

/// What makes a layout unsound, as half a sentence with counts and places: "3 flipped triangles
/// (first: triangle 17 of geometry 0)"; empty when nothing does.
std::string unsoundness(const CheckReport& check);

} // namespace uvtool
