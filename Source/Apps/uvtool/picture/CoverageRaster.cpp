#include "picture/CoverageRaster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

namespace uvtool
{
namespace
{

using Point = std::array<double, 2>;

/// Where the line through both points has the height y. The lower end always comes first, so that
/// two triangles at an edge get the very same number.
double crossing(Point a, Point b, double y)
{
    if (std::tie(b[1], b[0]) < std::tie(a[1], a[0]))
        std::swap(a, b);
    return a[0] + (b[0] - a[0]) * ((y - a[1]) / (b[1] - a[1]));
}

/// The first whole number i with i + 0.5 >= x, kept within 0 and `count`.
std::int32_t firstMiddleFrom(double x, std::int32_t count)
{
    return static_cast<std::int32_t>(
        std::clamp(std::ceil(x - 0.5), 0.0, static_cast<double>(count)));
}

/// Collects pairs of groups along one row or column.
class NeighbourScan
{
public:
    NeighbourScan(std::int32_t reach, std::vector<std::pair<std::uint32_t, std::uint32_t>>& pairs)
        : reach_(reach), pairs_(pairs)
    {}

    void startLine() { last_ = -1; }

    void visit(std::int32_t at, std::int32_t group)
    {
        if (group < 0)
            return;
        if (last_ >= 0 && group != last_ && at - lastAt_ <= reach_)
            pairs_.emplace_back(std::min(last_, group), std::max(last_, group));
        last_ = group;
        lastAt_ = at;
    }

private:
    std::int32_t reach_;
    std::vector<std::pair<std::uint32_t, std::uint32_t>>& pairs_;
    std::int32_t last_ = -1;
    std::int32_t lastAt_ = 0;
};

} // namespace

CoverageRaster::CoverageRaster(const RasterFrame& frame, const UVLayout& layout,
                               std::span<const std::int32_t> groupOfTriangle)
    : frame_(frame),
      count_(static_cast<std::size_t>(frame.columns) * static_cast<std::size_t>(frame.rows), 0),
      group_(count_.size(), -1)
{
    for (std::size_t t = 0; t < groupOfTriangle.size(); ++t) {
        if (groupOfTriangle[t] >= 0)
            cover(layout, t, groupOfTriangle[t]);
    }
}

void CoverageRaster::cover(const UVLayout& layout, std::size_t triangle, std::int32_t group)
{
    std::array<Point, 3> p;
    for (std::size_t k = 0; k < 3; ++k) {
        const std::array<float, 2>& uv = layout.point(triangle, k);
        p[k] = {(static_cast<double>(uv[0]) - frame_.left) * frame_.cellsPerUnit,
                (frame_.top - static_cast<double>(uv[1])) * frame_.cellsPerUnit};
    }
    const auto [low, high] = std::minmax({p[0][1], p[1][1], p[2][1]});
    const std::int32_t end = firstMiddleFrom(high, frame_.rows);
    for (std::int32_t row = firstMiddleFrom(low, frame_.rows); row < end; ++row) {
        const double y = row + 0.5;
        double from = std::numeric_limits<double>::max();
        double to = std::numeric_limits<double>::lowest();
        for (std::size_t k = 0; k < 3; ++k) {
            const Point& a = p[k];
            const Point& b = p[(k + 1) % 3];
            if ((a[1] <= y) == (b[1] <= y))
                continue;
            const double x = crossing(a, b, y);
            from = std::min(from, x);
            to = std::max(to, x);
        }
        if (from < to)
            coverRow(row, from, to, group);
    }
}

void CoverageRaster::coverRow(std::int32_t row, double from, double to, std::int32_t group)
{
    const std::int32_t end = firstMiddleFrom(to, frame_.columns);
    for (std::int32_t column = firstMiddleFrom(from, frame_.columns); column < end; ++column) {
        const std::size_t at = cell(row, column);
        if (count_[at] < std::numeric_limits<std::uint8_t>::max())
            ++count_[at];
        group_[at] = group;
    }
}

std::vector<CellBlock> CoverageRaster::overlapsInRow(std::int32_t row) const
{
    std::vector<CellBlock> runs;
    for (std::int32_t column = 0; column < frame_.columns; ++column) {
        if (!isOverlap(row, column))
            continue;
        if (!runs.empty() && runs.back().columnEnd == column)
            ++runs.back().columnEnd;
        else
            runs.push_back({row, column, row + 1, column + 1});
    }
    return runs;
}

std::vector<CellBlock> CoverageRaster::overlaps() const
{
    std::vector<CellBlock> blocks;
    std::vector<CellBlock> above; // those that end where the row begins
    for (std::int32_t row = 0; row < frame_.rows; ++row) {
        std::vector<CellBlock> here = overlapsInRow(row);
        auto next = above.begin();
        for (CellBlock& run : here) {
            while (next != above.end() && next->column < run.column)
                blocks.push_back(*next++);
            if (next != above.end() && next->column == run.column &&
                next->columnEnd == run.columnEnd)
                run.row = (next++)->row;
        }
        blocks.insert(blocks.end(), next, above.end());
        above = std::move(here);
    }
    blocks.insert(blocks.end(), above.begin(), above.end());
    return blocks;
}

std::vector<CellStroke> CoverageRaster::overlapHatch(std::int32_t spacing) const
{
    std::vector<CellStroke> strokes;
    // Along a rising diagonal the sum of row and column stays the same.
    for (std::int32_t sum = 0; sum < frame_.rows + frame_.columns - 1; sum += spacing) {
        const std::int32_t lowest = std::min(sum, frame_.rows - 1);
        const std::int32_t highest = std::max(0, sum - frame_.columns + 1);
        std::int32_t length = 0;
        for (std::int32_t row = lowest; row >= highest - 1; --row) {
            if (row >= highest && isOverlap(row, sum - row)) {
                ++length;
                continue;
            }
            if (length > 0)
                strokes.push_back({row + length, sum - row - length, length});
            length = 0;
        }
    }
    return strokes;
}

std::size_t CoverageRaster::excess() const
{
    std::size_t sum = 0;
    for (const std::uint8_t count : count_)
        sum += count > 1 ? count - 1U : 0U;
    return sum;
}

std::vector<std::pair<std::uint32_t, std::uint32_t>>
CoverageRaster::neighbours(std::int32_t reach) const
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    NeighbourScan scan(reach, pairs);
    for (std::int32_t row = 0; row < frame_.rows; ++row) {
        scan.startLine();
        for (std::int32_t column = 0; column < frame_.columns; ++column)
            scan.visit(column, group_[cell(row, column)]);
    }
    for (std::int32_t column = 0; column < frame_.columns; ++column) {
        scan.startLine();
        for (std::int32_t row = 0; row < frame_.rows; ++row)
            scan.visit(row, group_[cell(row, column)]);
    }
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return pairs;
}

} // namespace uvtool
