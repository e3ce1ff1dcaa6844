#pragma once

#include "Unfold3D/packing/Outline.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Cells begin to end - 1 of one row.
struct CellRun
{
    int row = 0;
    int begin = 0;
    int end = 0;

    int length() const { return end - begin; }
};

/// The cells that an island with half the gap around it touches, at a place where the lower left
/// corner of cell (0, 0) is the lower left corner of its box.
///
/// Conservative: what is not in one of these cells is outside, so islands whose cells don't meet
/// keep the gap.
struct ShapeRaster
{
    int width = 0;
    int height = 0;
    Vec2 corner; ///< lower left corner of cell (0, 0), seen from the origin of the outline
    std::vector<CellRun> runs; ///< by row, then by column; they don't touch
    long long cellCount = 0;
};

/// Rasters the region within `outline`, turned around the origin by the angle of `turn` and scaled
/// by its length, and all within `radius` of it. `cell` is the side of a cell. About the cells of
/// the border plus edges times the rows that each crosses.
ShapeRaster rasterShape(std::span<const OutlineEdge> outline, Vec2 turn, double radius,
                        double cell);

/// The same for a fixed grid: cell (0, 0) has its lower left corner at the origin, and what is
/// outside `width` times `height` cells is left out. `shift` is added to the outline.
ShapeRaster rasterInFrame(std::span<const OutlineEdge> outline, Vec2 shift, double radius,
                          double cell, int width, int height);

} // namespace unfold3d
