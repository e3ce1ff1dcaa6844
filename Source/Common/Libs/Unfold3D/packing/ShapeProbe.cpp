#include "Unfold3D/packing/BitSheet.h"

#include <algorithm>
#include <bit>

namespace unfold3d
{

namespace
{

using Core = ShapeProbe::Core;

/// The longest run of each row.
std::vector<CellRun> longestRuns(const ShapeRaster& shape)
{
    std::vector<CellRun> longest(static_cast<std::size_t>(shape.height));
    for (const CellRun& run : shape.runs) {
        CellRun& known = longest[static_cast<std::size_t>(run.row)];
        if (run.length() > known.length())
            known = run;
    }
    return longest;
}

/// Replaces each row by what it has in common with the row `distance` above.
void overlapRows(std::vector<CellRun>& rows, std::size_t distance)
{
    if (rows.size() <= distance) {
        rows.clear();
        return;
    }
    for (std::size_t y = 0; y + distance < rows.size(); ++y) {
        rows[y].begin = std::max(rows[y].begin, rows[y + distance].begin);
        rows[y].end = std::min(rows[y].end, rows[y + distance].end);
    }
    rows.resize(rows.size() - distance);
}

Core widest(const std::vector<CellRun>& rows)
{
    Core core;
    for (std::size_t y = 0; y < rows.size(); ++y)
        if (rows[y].length() > core.width)
            core = {static_cast<int>(y), rows[y].length()};
    return core;
}

/// Brings the list into the order middle, quarters, eighths ... of the list that it is.
void spread(std::vector<CellRun>& runs)
{
    std::vector<CellRun> result;
    result.reserve(runs.size());
    const std::size_t whole = std::bit_ceil(runs.size() + 1);
    for (std::size_t step = whole / 2; step > 0; step /= 2)
        for (std::size_t i = step; i <= runs.size(); i += 2 * step)
            result.push_back(runs[i - 1]);
    runs = std::move(result);
}

} // namespace

ShapeProbe::ShapeProbe(const ShapeRaster& shape) : width(shape.width), height(shape.height)
{
    if (shape.runs.empty())
        return;
    std::vector<CellRun> order = shape.runs;
    spread(order);
    const auto longest =
        std::max_element(order.begin(), order.end(), [](const CellRun& a, const CellRun& b) {
            return a.length() < b.length();
        });
    std::rotate(order.begin(), longest, longest + 1);
    runs.reserve(order.size());
    for (const CellRun& run : order) {
        const int level = static_cast<int>(std::bit_width(static_cast<unsigned>(run.length()))) - 1;
        const int second = run.end - (1 << level);
        runs.push_back({run.row, level, run.begin / 64, second / 64,
                        static_cast<unsigned>(run.begin % 64), static_cast<unsigned>(second % 64)});
    }

    std::vector<CellRun> common = longestRuns(shape);
    for (std::size_t level = 0; level < heightLevels; ++level) {
        cores[level] = widest(common);
        overlapRows(common, std::size_t{1} << level);
    }
}

} // namespace unfold3d
