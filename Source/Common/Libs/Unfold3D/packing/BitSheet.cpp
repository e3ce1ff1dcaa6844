#include "Unfold3D/packing/BitSheet.h"

#include <algorithm>
#include <bit>

namespace unfold3d
{

namespace
{

int levelOf(int length)
{
    return static_cast<int>(std::bit_width(static_cast<unsigned>(length))) - 1;
}

/// Word w of the row moved left by 64 `words` and some `bits`.
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
      // A row is followed by occupied cells, as many as a shift can reach.
      stride_(2 * words() + 2),
      long_(static_cast<std::size_t>(levelOf(std::clamp(longestRun, 1, width))) + 1),
      freeCells_(static_cast<long long>(width) * height)
{
    const Rows occupied(stride_ * static_cast<std::size_t>(height), ~Word{0});
    std::fill(long_.begin(), long_.end(), occupied);
    for (std::size_t level = 0; level < ShapeProbe::heightLevels; ++level) {
        if (level > 0)
            tall_[level] = occupied;
        gaps_[level].assign(static_cast<std::size_t>(height), {width, false});
    }
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; x += 64)
            row(long_[0], y)[x / 64] = width - x >= 64 ? Word{0} : ~Word{0} << (width - x);
    updateRows(0, height);
}

void BitSheet::updateRows(int begin, int end)
{
    for (int y = begin; y < end; ++y)
        updateLongRuns(y);
    updateTallRows(begin, end);
}

void BitSheet::updateLongRuns(int y)
{
    for (std::size_t level = 1; level < long_.size(); ++level) {
        const Word* const half = row(long_[level - 1], y);
        Word* const whole = row(long_[level], y);
        const std::size_t reach = std::size_t{1} << (level - 1);
        for (std::size_t w = 0; w < words(); ++w)
            whole[w] = half[w] | movedWord(half, w, reach / 64, static_cast<unsigned>(reach % 64));
    }
}

void BitSheet::updateTallRows(int begin, int end)
{
    for (std::size_t level = 0; level < ShapeProbe::heightLevels; ++level) {
        const int rows = 1 << level;
        const int last = std::min(end, height_ - rows + 1);
        for (int y = std::max(0, begin - rows + 1); y < last; ++y) {
            if (level > 0) {
                const Rows& half = level == 1 ? long_[0] : tall_[level - 1];
                const Word* const low = row(half, y);
                const Word* const high = row(half, y + rows / 2);
                Word* const whole = row(tall_[level], y);
                for (std::size_t w = 0; w < words(); ++w)
                    whole[w] = low[w] | high[w];
            }
            gaps_[level][static_cast<std::size_t>(y)].isExact = false;
        }
    }
}

int BitSheet::longestGap(const Word* cells) const
{
    int longest = 0;
    int begin = 0; // of the gap that the walk is in
    for (int x = 0; x < width_; x += 64) {
        const Word word = cells[x / 64];
        if (word == 0)
            continue;
        if (word == ~Word{0}) {
            longest = std::max(longest, x - begin);
            begin = x + 64;
            continue;
        }
        for (int bit = 0; bit < 64;) {
            const Word left = word >> bit;
            if (left == 0)
                break;
            const int free = std::countr_zero(left);
            longest = std::max(longest, x + bit + free - begin);
            bit += free + std::countr_one(left >> free);
            begin = x + bit;
        }
    }
    return std::max(longest, width_ - begin);
}

bool BitSheet::hasGap(std::size_t level, int y, int width) const
{
    Gap& gap = gaps_[level][static_cast<std::size_t>(y)];
    if (!gap.isExact && gap.length >= width)
        gap = {longestGap(row(level == 0 ? long_[0] : tall_[level], y)), true};
    return gap.length >= width;
}

bool BitSheet::mayFit(const ShapeProbe& shape, int y) const
{
    for (std::size_t level = 0; level < ShapeProbe::heightLevels; ++level) {
        const ShapeProbe::Core& core = shape.cores[level];
        if (core.width == 0)
            return true;
        if (!hasGap(level, y + core.row, core.width))
            return false;
    }
    return true;
}

/// The leftmost column at which the shape fits with its lowest cells in row y; the width of the
/// sheet when there is none.
int BitSheet::leftmostFit(const ShapeProbe& shape, int y) const
{
    const int columns = width_ - shape.width + 1;
    for (int column = 0; column < columns; column += 64) {
        const auto w = static_cast<std::size_t>(column) / 64;
        Word isFree = columns - column >= 64 ? ~Word{0} : ~Word{0} >> (64 - (columns - column));
        for (const ShapeProbe::Run& run : shape.runs) {
            const Word* const cells = row(long_[static_cast<std::size_t>(run.level)], y + run.row);
            isFree &=
                ~(movedWord(cells, w, static_cast<std::size_t>(run.firstWords), run.firstBits) |
                  movedWord(cells, w, static_cast<std::size_t>(run.secondWords), run.secondBits));
            if (isFree == 0)
                break;
        }
        if (isFree != 0)
            return column + std::countr_zero(isFree);
    }
    return width_;
}

std::optional<Cell> BitSheet::lowestFit(const ShapeProbe& shape, int topLimit) const
{
    if (shape.width > width_ || shape.runs.empty())
        return std::nullopt;
    const int last = std::min(height_, topLimit) - shape.height;
    for (int y = 0; y <= last; ++y) {
        if (!mayFit(shape, y))
            continue;
        if (const int x = leftmostFit(shape, y); x < width_)
            return Cell{x, y};
    }
    return std::nullopt;
}

void BitSheet::occupy(const ShapeRaster& shape, Cell at)
{
    for (const CellRun& run : shape.runs) {
        Word* const cells = row(long_[0], at.y + run.row);
        for (int x = at.x + run.begin; x < at.x + run.end;) {
            const int bit = x % 64;
            const int count = std::min(64 - bit, at.x + run.end - x);
            const Word mask = (~Word{0} >> (64 - count)) << bit;
            freeCells_ -= std::popcount(mask & ~cells[x / 64]);
            cells[x / 64] |= mask;
            x += count;
        }
    }
    updateRows(at.y, at.y + shape.height);
}

} // namespace unfold3d
