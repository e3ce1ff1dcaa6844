#pragma once

#include "check/Distortion.h"

#include <cstddef>

namespace uvtool
{

/// What a layout is like, before or after it was relaxed.
struct LayoutQuality
{
    Distortion distortion;
    std::size_t flipped = 0;   ///< triangles, as the check counts them
    std::size_t crossings = 0; ///< of borders, within islands
};

/// What relaxing did to a geometry.
struct RelaxReport
{
    LayoutQuality before;
    LayoutQuality after;
    std::size_t islandsMoved = 0; ///< of which a UV has changed
};

/// What came of the edges that were to lie along an axis.
struct LineReport
{
    std::size_t horizontalEdges = 0;
    std::size_t verticalEdges = 0;
    std::size_t notInMesh = 0; ///< named by vertices that no triangle side joins
    std::size_t inBoth = 0;    ///< named for both axes, and held vertical

    std::size_t lines = 0;   ///< that they form, in islands that were worked on
    std::size_t crooked = 0; ///< of these, not straight
    double deviation = 0.0;  ///< of the straight ones at most, as a share of the layout's size
};

} // namespace uvtool
