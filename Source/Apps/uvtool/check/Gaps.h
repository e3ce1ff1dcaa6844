#pragma once

#include "check/Borders.h"

#include <cstdint>

namespace uvtool
{

/// The least distance between the borders of two islands.
struct IslandGap
{
    double distance = 0.0;
    std::int32_t island = -1; ///< -1 when the layout has fewer than two islands with a border
    std::int32_t other = -1;

    bool exists() const { return island >= 0; }
};

/// Distances are those of the segments themselves, rounded once or twice in doubles; 0 where
/// borders touch or cross. An island that lies inside another has a distance to its border all the
/// same.
IslandGap smallestGap(const Borders& borders);

} // namespace uvtool
