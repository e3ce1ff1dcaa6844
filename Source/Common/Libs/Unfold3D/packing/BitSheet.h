#pragma once

#include "Unfold3D/packing/ShapeRaster.h"

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

/// A sheet of cells, free or occupied, that finds room for shapes.
///
/// A place is tried for 64 columns at a time: for each row of the shape, the cells that its run
/// would cover are or-ed together by shifts. To have that for a run of any length in two shifts,
/// the sheet keeps, beside its rows, those in which each cell stands for the next 2, 4, 8 ...
/// cells.
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
    std::optional<Cell> lowestFit(const ShapeRaster& shape, int topLimit) const;

    /// Occupies the cells of a shape at a place inside the sheet.
    void occupy(const ShapeRaster& shape, Cell at);

private:
    using Word = std::uint64_t;

    const Word* row(int level, int y) const
    {
        return &words_[(static_cast<std::size_t>(level) * static_cast<std::size_t>(height_) +
                        static_cast<std::size_t>(y)) *
                       stride_];
    }
    Word* row(int level, int y)
    {
        return const_cast<Word*>(static_cast<const BitSheet*>(this)->row(level, y));
    }
    void updateRow(int y);
    bool freeColumns(const std::vector<CellRun>& runs, int y, int columns,
                     std::vector<Word>& isFree) const;

    int width_;
    int height_;
    int levels_;
    std::size_t stride_;
    std::vector<Word> words_;     ///< [level][row][word]; level k stands for 2^k cells
    std::vector<int> longestGap_; ///< [row] free cells side by side
    long long freeCells_ = 0;
};

} // namespace unfold3d
