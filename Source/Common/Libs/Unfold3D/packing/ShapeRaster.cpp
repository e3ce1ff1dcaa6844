#include "Unfold3D/packing/ShapeRaster.h"

#include "Unfold3D/base/Box2.h"
#include "Unfold3D/packing/Turned.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace unfold3d
{

namespace
{

/// Share of a cell by which a box may reach into the next without touching it: rounding.
constexpr double touch = 1e-9;

/// A bitmap in which runs of cells are marked.
class Marks
{
public:
    Marks(int width, int height)
        : width_(width), height_(height), stride_((static_cast<std::size_t>(width) + 63) / 64),
          words_(stride_ * static_cast<std::size_t>(height), 0)
    {}

    int width() const { return width_; }
    int height() const { return height_; }

    /// Cells begin to end - 1; what is outside the bitmap is passed over.
    void mark(int row, int begin, int end)
    {
        begin = std::max(begin, 0);
        end = std::min(end, width_);
        if (begin >= end || row < 0 || row >= height_)
            return;
        std::uint64_t* const words = &words_[static_cast<std::size_t>(row) * stride_];
        const auto first = static_cast<std::size_t>(begin) / 64;
        const auto last = static_cast<std::size_t>(end - 1) / 64;
        const std::uint64_t fromBegin = ~std::uint64_t{0} << (begin % 64);
        const std::uint64_t toEnd = ~std::uint64_t{0} >> (63 - (end - 1) % 64);
        if (first == last) {
            words[first] |= fromBegin & toEnd;
            return;
        }
        words[first] |= fromBegin;
        std::fill(words + first + 1, words + last, ~std::uint64_t{0});
        words[last] |= toEnd;
    }

    std::vector<CellRun> runs() const
    {
        std::vector<CellRun> runs;
        for (int row = 0; row < height_; ++row)
            for (int begin = next(row, 0, true); begin < width_;) {
                const int end = next(row, begin, false);
                runs.push_back({row, begin, end});
                begin = next(row, end, true);
            }
        return runs;
    }

private:
    /// First cell from `column` on that is marked or not, as wanted; the width when there is none.
    int next(int row, int column, bool marked) const
    {
        while (column < width_) {
            const std::uint64_t word = words_[static_cast<std::size_t>(row) * stride_ +
                                              static_cast<std::size_t>(column) / 64];
            const std::uint64_t wanted = (marked ? word : ~word) >> (column % 64);
            if (wanted != 0)
                return std::min(width_, column + __builtin_ctzll(wanted));
            column = (column / 64 + 1) * 64;
        }
        return width_;
    }

    int width_;
    int height_;
    std::size_t stride_;
    std::vector<std::uint64_t> words_;
};

struct Span
{
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double x)
    {
        low = std::min(low, x);
        high = std::max(high, x);
    }
};

/// A band of the plane between two heights.
struct Band
{
    double low;
    double high;
};

void addDisc(Vec2 centre, double radius, const Band& band, Span& span)
{
    const double away = std::max({0.0, band.low - centre.y, centre.y - band.high});
    if (away > radius)
        return;
    const double half = std::sqrt(radius * radius - away * away);
    span.add(centre.x - half);
    span.add(centre.x + half);
}

void addSegment(Vec2 a, Vec2 b, const Band& band, Span& span)
{
    if (a.y > b.y)
        std::swap(a, b);
    if (b.y < band.low || a.y > band.high)
        return;
    const auto at = [&](double y) { return a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y)); };
    span.add(a.y >= band.low ? a.x : at(band.low));
    span.add(b.y <= band.high ? b.x : at(band.high));
}

/// Everything within `radius` of a segment, as far as it lies in the band: a convex shape, so its
/// two ends tell all. They are on the discs at its ends or on the two long sides.
Span capsuleSpan(Vec2 a, Vec2 b, double radius, const Band& band)
{
    Span span;
    addDisc(a, radius, band, span);
    addDisc(b, radius, band, span);
    const double size = length(b - a);
    if (size > 0.0) {
        const Vec2 aside = (radius / size) * Vec2{a.y - b.y, b.x - a.x};
        addSegment(a + aside, b + aside, band, span);
        addSegment(a - aside, b - aside, band, span);
    }
    return span;
}

int clampedCell(double position, int count)
{
    return static_cast<int>(std::clamp(std::floor(position), -1.0, static_cast<double>(count)));
}

/// Marks all cells within the radius of the edge. Coordinates and radius count cells here.
void markBorder(Vec2 a, Vec2 b, double radius, Marks& marks)
{
    const int first = std::max(0, clampedCell(std::min(a.y, b.y) - radius, marks.height()));
    const int last =
        std::min(marks.height() - 1, clampedCell(std::max(a.y, b.y) + radius, marks.height()));
    for (int row = first; row <= last; ++row) {
        const Span span = capsuleSpan(a, b, radius, {double(row), double(row) + 1.0});
        if (span.low <= span.high)
            marks.mark(row, clampedCell(span.low, marks.width()),
                       clampedCell(span.high, marks.width()) + 1);
    }
}

/// Where an edge crosses the middle of a row.
struct Crossing
{
    int row;
    int winding; ///< what the number of triangles changes by, from left to right
    double x;

    friend bool operator<(const Crossing& a, const Crossing& b)
    {
        return a.row != b.row ? a.row < b.row : a.x < b.x;
    }
};

void addCrossings(Vec2 a, Vec2 b, int winding, int height, std::vector<Crossing>& crossings)
{
    if (winding == 0 || a.y == b.y)
        return;
    // Upward, an edge has its left side towards the smaller x.
    int change = -winding;
    if (a.y > b.y) {
        std::swap(a, b);
        change = winding;
    }
    const auto firstFrom = [&](double y) {
        return static_cast<int>(std::clamp(std::ceil(y - 0.5), 0.0, static_cast<double>(height)));
    };
    const int end = firstFrom(b.y);
    for (int row = firstFrom(a.y); row < end; ++row) {
        const double share = (row + 0.5 - a.y) / (b.y - a.y);
        crossings.push_back({row, change, a.x + share * (b.x - a.x)});
    }
}

/// Marks the cells whose middle a triangle covers. All others that the region touches are at its
/// border.
void markInside(std::vector<Crossing> crossings, Marks& marks)
{
    std::sort(crossings.begin(), crossings.end());
    int winding = 0;
    for (std::size_t i = 0; i < crossings.size(); ++i) {
        const Crossing& left = crossings[i];
        if (i == 0 || crossings[i - 1].row != left.row)
            winding = 0;
        winding += left.winding;
        if (winding <= 0 || i + 1 == crossings.size() || crossings[i + 1].row != left.row)
            continue;
        const auto firstFrom = [&](double x) {
            return static_cast<int>(
                std::clamp(std::ceil(x - 0.5), 0.0, static_cast<double>(marks.width())));
        };
        marks.mark(left.row, firstFrom(left.x), firstFrom(crossings[i + 1].x));
    }
}

/// A transform of outline coordinates into cells.
struct ToCells
{
    Vec2 turn;
    Vec2 shift;
    double cell;

    Vec2 operator()(Vec2 p) const { return (1.0 / cell) * (turned(p, turn) + shift); }
};

ShapeRaster raster(std::span<const OutlineEdge> outline, const ToCells& toCells, double radius,
                   int width, int height)
{
    Marks marks(width, height);
    std::vector<Crossing> crossings;
    for (const OutlineEdge& edge : outline) {
        const Vec2 a = toCells(edge.from);
        const Vec2 b = toCells(edge.to);
        markBorder(a, b, radius / toCells.cell, marks);
        addCrossings(a, b, edge.winding, height, crossings);
    }
    markInside(std::move(crossings), marks);

    ShapeRaster shape;
    shape.width = width;
    shape.height = height;
    shape.runs = marks.runs();
    for (const CellRun& run : shape.runs)
        shape.cellCount += run.length();
    return shape;
}

int cellsAcross(double size, double cell)
{
    return std::max(1, static_cast<int>(std::ceil(size / cell - touch)));
}

} // namespace

ShapeRaster rasterShape(std::span<const OutlineEdge> outline, Vec2 turn, double radius, double cell)
{
    Box2 box;
    for (const OutlineEdge& edge : outline) {
        box.add(turned(edge.from, turn));
        box.add(turned(edge.to, turn));
    }
    if (box.isEmpty())
        return {};
    box = box.inflatedBy(radius);
    ShapeRaster shape = raster(outline, {turn, Vec2{} - box.low, cell}, radius,
                               cellsAcross(box.width(), cell), cellsAcross(box.height(), cell));
    shape.corner = box.low;
    return shape;
}

ShapeRaster rasterInFrame(std::span<const OutlineEdge> outline, Vec2 shift, double radius,
                          double cell, int width, int height)
{
    return raster(outline, {{1.0, 0.0}, shift, cell}, radius, width, height);
}

} // namespace unfold3d
