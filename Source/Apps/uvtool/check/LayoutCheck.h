#pragma once

#include "check/Finding.h"
#include "check/Gaps.h"
#include "check/Overlaps.h"
#include "layout/UVBox.h"
#include "layout/UVLayout.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace uvtool
{

/// What is right and wrong with a UV layout, found on the very floats that go into the file.
///
/// Signs are exact, so nothing here depends on a resolution or a tolerance.
struct LayoutCheck
{
    std::size_t triangles = 0; ///< looked at: those of islands 0 and up
    std::size_t islands = 0;   ///< with at least one triangle

    Finding nonFinite;  ///< triangles with a NaN or an infinity; left out of all that follows
    Finding degenerate; ///< triangles without an area
    Finding flipped;    ///< triangles that turn against the larger part (by area) of their island
    std::size_t mirroredIslands = 0; ///< those whose larger part turns clockwise

    OverlapReport overlaps;
    IslandGap gap; ///< 0 where one island covers a part of another

    double area = 0.0; ///< sum of all triangles', each counted as positive
    UVBox bounds;      ///< of all UVs that a triangle uses; empty when there is none

    /// How far the islands stay inside the boxes, each inside the one that suits it best: the least
    /// distance to a side, negative when one reaches over it. Infinite without boxes or islands.
    double margin = std::numeric_limits<double>::infinity();
    Finding outside; ///< islands that reach over a side of their box; `first` is the island

    /// True when the layout can be used: finite, without a flip and covered once. Gap, margin and
    /// boxes are for the caller to compare with what was asked for; triangles without an area are
    /// for it to judge too, since those without an area in space cannot have one here.
    bool isSound() const
    {
        return nonFinite.count == 0 && flipped.count == 0 && overlaps.coveredWithin.count == 0 &&
               overlaps.coveredBetween.count == 0 && overlaps.crossingsWithin.count == 0 &&
               overlaps.crossingsBetween.count == 0;
    }
};

/// Checks a layout. `boxes` are those that the islands may lie in: the box of the packing, or one
/// for each tile; none when it may lie anywhere. About n log n in triangles.
LayoutCheck checkLayout(const UVLayout& layout, std::span<const UVBox> boxes = {});

} // namespace uvtool
