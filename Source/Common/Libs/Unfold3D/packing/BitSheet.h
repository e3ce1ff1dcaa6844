#pragma once

#include "Unfold3D/packing/ShapeRaster.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace unfold3d
{

/// A cell of a sheet.
struct Cell
{
    int x = 0;
    int y = 0;
};

/// A shape as it is looked for on a sheet.
///
/// The runs stand in the order in which they are tried: the longest first, which is the hardest to
/// place, then so that each is far from those before, since neighbours tell much the same.
struct ShapeProbe
{
    /// Levels of heights: 1, 2, 4 ... rows.
    static constexpr std::size_t heightLevels = 6;

    /// A rectangle of 2^level rows inside the shape.
    struct Core
    {
        int row = 0;
        int width = 0; ///< 0 when the shape has no such rectangle
    };

    /// A run as it is asked about: two stretches of 2^level cells cover it, which begin so many
    /// words and bits to the right.
    struct Run
    {
        int row;
        int level;
        int firstWords;
        int secondWords;
        unsigned firstBits;
        unsigned secondBits;
    };

    int width = 0;
    int height = 0;
    std::vector<Run> runs;
    std::array<Core, heightLevels> cores; ///< [level] the widest

    explicit ShapeProbe(const ShapeRaster& shape);
};

/// A sheet of cells, free or occupied, that finds room for shapes.
///
/// A place is tried for 64 columns at a time: for one row of the shape after the other, the cells
/// that its run would cover are or-ed together by shifts, until no column is left. To have that for
/// a run of any length in two shifts, the sheet keeps, beside its rows, those in which each cell
/// stands for the next 2, 4, 8 ... cells. Most rows of a full sheet are passed over without that:
/// it also knows the widest gap that 1, 2, 4, 8 ... rows above each other have in common.
class BitSheet
{
public:
    /// longestRun  of all shapes that will be asked about
    BitSheet(int width, int height, int longestRun);

    int width() const { return width_; }
    int height() const { return height_; }
    long long freeCells() const { return freeCells_; }

    /// The lowest place where the shape fits, the leftmost of those, its top at most at row
    /// `topLimit`. None when there is none.
    std::optional<Cell> lowestFit(const ShapeProbe& shape, int topLimit) const;

    /// Occupies the cells of a shape at a place inside the sheet.
    void occupy(const ShapeRaster& shape, Cell at);

private:
    using Word = std::uint64_t;

    /// All rows at one level.
    using Rows = std::vector<Word>;

    std::size_t words() const { return (static_cast<std::size_t>(width_) + 63) / 64; }
    const Word* row(const Rows& rows, int y) const
    {
        return &rows[static_cast<std::size_t>(y) * stride_];
    }
    Word* row(Rows& rows, int y) const { return &rows[static_cast<std::size_t>(y) * stride_]; }
    void updateRows(int begin, int end);
    void updateLongRuns(int y);
    void updateTallRows(int begin, int end);
    int longestGap(const Word* cells) const;
    bool hasGap(std::size_t level, int y, int width) const;
    bool mayFit(const ShapeProbe& shape, int y) const;
    int leftmostFit(const ShapeProbe& shape, int y) const;

    int width_;
    int height_;
    std::size_t stride_;
    std::vector<Rows> long_; ///< [level] a cell stands for the next 2^level to the right
    std::array<Rows, ShapeProbe::heightLevels> tall_; ///< [level] a row stands for 2^level upward

    /// The longest gap of a row. Cells are only ever occupied, so one that isn't up to date is too
    /// long at most, and often that is all one has to know.
    struct Gap
    {
        int length = 0;
        bool isExact = true;
    };
    mutable std::array<std::vector<Gap>, ShapeProbe::heightLevels> gaps_; ///< [level][row]
    long long freeCells_ = 0;
};

} // namespace unfold3d
