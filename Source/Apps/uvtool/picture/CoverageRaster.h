#pragma once

#include "layout/UVLayout.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace uvtool
{

/// From UVs to the cells of a raster, whose rows run downward.
struct RasterFrame
{
    double left = 0; ///< u at the left side
    double top = 1;  ///< v at the upper side
    double cellsPerUnit = 1;
    std::int32_t columns = 0;
    std::int32_t rows = 0;
};

/// A rectangle of cells; both ends are behind the last one.
struct CellBlock
{
    std::int32_t row;
    std::int32_t column;
    std::int32_t rowEnd;
    std::int32_t columnEnd;
};

/// A stroke that rises to the right at 45 degrees, from the lower left corner of a cell to the
/// upper right one of another or the same.
struct CellStroke
{
    std::int32_t row; ///< of the lower left end
    std::int32_t column;
    std::int32_t length; ///< in cells
};

/// Which cells of a raster a layout covers, and how often.
///
/// A triangle covers the cells whose middle lies in it, those on a common edge counted for one of
/// two neighbours only: islands that touch don't overlap. What is thinner than a cell may be
/// missed.
class CoverageRaster
{
public:
    /// Triangles with a negative group are left out. Linear in triangles and covered cells; cells
    /// covered very many times over are cut off at 255.
    CoverageRaster(const RasterFrame& frame, const UVLayout& layout,
                   std::span<const std::int32_t> groupOfTriangle);

    /// The cells that are covered more than once, as blocks that don't meet.
    std::vector<CellBlock> overlaps() const;

    /// Strokes that hatch these cells, `spacing` cells apart along a row.
    std::vector<CellStroke> overlapHatch(std::int32_t spacing) const;

    /// How many cells' area is covered more than once, each cell counted as often as it is covered
    /// beyond the first time.
    std::size_t excess() const;

    /// Pairs of groups that come closer to each other than `reach` cells along a row or a column
    /// with nothing between them; the lower one first, sorted.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> neighbours(std::int32_t reach) const;

private:
    void cover(const UVLayout& layout, std::size_t triangle, std::int32_t group);
    bool isOverlap(std::int32_t row, std::int32_t column) const
    {
        return count_[cell(row, column)] > 1;
    }
    void coverRow(std::int32_t row, double from, double to, std::int32_t group);
    std::vector<CellBlock> overlapsInRow(std::int32_t row) const;

    std::size_t cell(std::int32_t row, std::int32_t column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(frame_.columns) +
               static_cast<std::size_t>(column);
    }

    RasterFrame frame_;
    std::vector<std::uint8_t> count_; ///< by cell
    std::vector<std::int32_t> group_; ///< by cell, the one that came last; -1 for none
};

} // namespace uvtool
