#pragma once

#include "check/Borders.h"
#include "check/Finding.h"
#include "layout/UVLayout.h"

#include <cstdint>
#include <span>

namespace uvtool
{

/// Where a layout covers a point twice, and where its borders cross. Both are exact: touching is
/// neither, the least positive overlap is.
struct OverlapReport
{
    /// Border segments with a triangle of the same island, or of another, over their inner side. A
    /// layout covers some point twice exactly when there is one: the region that is covered twice
    /// ends somewhere, and where it ends there is a border with its own triangle and another one on
    /// its inner side. `first` is the triangle of the border, `other` the one over it.
    Finding coveredWithin;
    Finding coveredBetween;

    /// Pairs of border segments that cross in a point inside both. `first` and `other` are their
    /// triangles.
    Finding crossingsWithin;
    Finding crossingsBetween;

    /// False when counting stopped early because there was no end of overlaps; the counts are lower
    /// bounds then.
    bool countedAll = true;
};

/// About n log n in triangles and border segments, and linear in what is found.
OverlapReport findOverlaps(const UVLayout& layout, std::span<const std::int8_t> signOfTriangle,
                           const Borders& borders);

} // namespace uvtool
