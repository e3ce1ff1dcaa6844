#include "Unfold3D/packing/BitSheet.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace unfold3d
{

namespace
{

int levelOf(int length)
{
    return std::bit_width(static_cast<unsigned>(length)) - 1;
}

/// Word w of the row moved left by `cells`, which brings cell x + cells to cell x.
template <class Word>
Word movedWord(const Word* row, std::size_t w, std::size_t words, unsigned bits)
{
    const Word* const at = row + w + words;
    // Two shifts instead of one by 64, which would be undefined.
    return (at[0] >> bits) | ((at[1] << 1) << (63 - bits));
}

} // namespace

BitSheet::BitSheet(int width, int height, int longestRun)
    : width_(width), height_(height),
      levels_(levelOf(std::max(1, std::min(longestRun, width))) + 1),
      // A row is followed by occupied cells, as many as a shift can reach.
      stride_(2 * ((static_cast<std::size_t>(width) + 63) / 64) + 2),
      words_(stride_ * static_cast<std::size_t>(height) * static_cast<std::size_t>(levels_),
             ~Word{0}),
      longestGap_(static_cast<std::size_t>(height)),
      freeCells_(static_cast<long long>(width) * height)
{
    for (int y = 0; y < height; ++y) {
        Word* const cells = row(0, y);
        for (int x = 0; x < width; x += 64)
            cells[x / 64] = width - x >= 64 ? Word{0} : ~Word{0} << (width - x);
        updateRow(y);
    }
}

void BitSheet::updateRow(int y)
{
    const std::size_t words = (static_cast<std::size_t>(width_) + 63) / 64;
    for (int level = 1; level < levels_; ++level) {
        const Word* const half = row(level - 1, y);
        Word* const whole = row(level, y);
        const int reach = 1 << (level - 1);
        for (std::size_t w = 0; w < words; ++w)
            whole[w] = half[w] | movedWord(half, w, static_cast<std::size_t>(reach) / 64,
                                           static_cast<unsigned>(reach % 64));
    }

    int longest = 0;
    int begin = 0;
    const Word* const cells = row(0, y);
    const auto next = [&](int x, bool occupied) {
        while (x < width_) {
            const Word word = cells[x / 64];
            const Word wanted = (occupied ? word : ~word) >> (x % 64);
            if (wanted != 0)
                return std::min(width_, x + std::countr_zero(wanted));
            x = (x / 64 + 1) * 64;
        }
        return width_;
    };
    while ((begin = next(begin, false)) < width_) {
        const int end = next(begin, true);
        longest = std::max(longest, end - begin);
        begin = end;
    }
    longestGap_[static_cast<std::size_t>(y)] = longest;
}

bool BitSheet::freeColumns(const std::vector<CellRun>& runs, int y, int columns,
                           std::vector<Word>& isFree) const
{
    const std::size_t words = (static_cast<std::size_t>(columns) + 63) / 64;
    std::fill(isFree.begin(), isFree.end(), ~Word{0});
    if (columns % 64 != 0)
        isFree[words - 1] = ~Word{0} >> (64 - columns % 64);
    for (const CellRun& run : runs) {
        const int level = levelOf(run.length());
        const Word* const cells = row(level, y + run.row);
        const auto first = static_cast<std::size_t>(run.begin);
        const auto second = static_cast<std::size_t>(run.end - (1 << level));
        Word any = 0;
        for (std::size_t w = 0; w < words; ++w) {
            isFree[w] &= ~(movedWord(cells, w, first / 64, static_cast<unsigned>(first % 64)) |
                           movedWord(cells, w, second / 64, static_cast<unsigned>(second % 64)));
            any |= isFree[w];
        }
        if (any == 0)
            return false;
    }
    return true;
}

std::optional<Cell> BitSheet::lowestFit(const ShapeRaster& shape, int topLimit) const
{
    const int columns = width_ - shape.width + 1;
    if (columns <= 0 || shape.runs.empty())
        return std::nullopt;
    // The longest runs are the hardest to place: first, so that a row is given up soon.
    std::vector<CellRun> runs = shape.runs;
    std::stable_sort(runs.begin(), runs.end(),
                     [](const CellRun& a, const CellRun& b) { return a.length() > b.length(); });
    const CellRun& longest = runs.front();
    std::vector<Word> isFree((static_cast<std::size_t>(columns) + 63) / 64);
    const int last = std::min(height_, topLimit) - shape.height;
    for (int y = 0; y <= last; ++y) {
        if (longestGap_[static_cast<std::size_t>(y + longest.row)] < longest.length())
            continue;
        if (!freeColumns(runs, y, columns, isFree))
            continue;
        for (std::size_t w = 0; w < isFree.size(); ++w)
            if (isFree[w] != 0)
                return Cell{static_cast<int>(64 * w) + std::countr_zero(isFree[w]), y};
    }
    return std::nullopt;
}

void BitSheet::occupy(const ShapeRaster& shape, Cell at)
{
    for (std::size_t i = 0; i < shape.runs.size(); ++i) {
        const CellRun& run = shape.runs[i];
        const int y = at.y + run.row;
        Word* const cells = row(0, y);
        for (int x = at.x + run.begin; x < at.x + run.end;) {
            const int bit = x % 64;
            const int count = std::min(64 - bit, at.x + run.end - x);
            const Word mask = (~Word{0} >> (64 - count)) << bit;
            freeCells_ -= std::popcount(mask & ~cells[x / 64]);
            cells[x / 64] |= mask;
            x += count;
        }
        if (i + 1 == shape.runs.size() || shape.runs[i + 1].row != run.row)
            updateRow(y);
    }
}

} // namespace unfold3d
