#include "Unfold3D/seams/LayoutOverlap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace unfold3d
{

namespace
{

constexpr double cellsOnLongSide = 128.0;
constexpr int none = -1;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A raster over a layout: for each cell the first two triangles that cover its middle.
class CoverRaster
{
public:
    CoverRaster(std::span<const Triangle> triangles, std::span<const Vec2> uv)
        : triangles_(triangles)
    {
        Vec2 low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
        Vec2 high = -1.0 * low;
        for (const Vec2 p : uv) {
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
        const double side = std::max(high.x - low.x, high.y - low.y);
        if (!(side > 0.0) || !std::isfinite(side))
            return;
        origin_ = low;
        perCell_ = cellsOnLongSide / side;
        columns_ = static_cast<int>(perCell_ * (high.x - low.x)) + 1;
        rows_ = static_cast<int>(perCell_ * (high.y - low.y)) + 1;
        first_.assign(at(columns_ * rows_), none);
        second_.assign(first_.size(), none);
        for (std::size_t t = 0; t < triangles.size(); ++t)
            draw(static_cast<int>(t), placed(uv[at(triangles[t][0])]),
                 placed(uv[at(triangles[t][1])]), placed(uv[at(triangles[t][2])]));
    }

    LayoutOverlap measure() const
    {
        LayoutOverlap overlap;
        const auto isCovered = [](int triangle) { return triangle != none; };
        const auto once = std::count_if(first_.begin(), first_.end(), isCovered);
        const auto twice = std::count_if(second_.begin(), second_.end(), isCovered);
        if (twice == 0)
            return overlap;
        overlap.share = static_cast<double>(twice) / static_cast<double>(once);
        const std::size_t cell = middleOf(largestPlace());
        overlap.triangleA = first_[cell];
        overlap.triangleB = second_[cell];
        return overlap;
    }

private:
    Vec2 placed(Vec2 p) const { return perCell_ * (p - origin_); }

    void draw(int triangle, Vec2 a, Vec2 b, Vec2 c)
    {
        const auto cellFrom = [](double x) { return static_cast<int>(std::ceil(x - 0.5)); };
        const auto [lowX, highX] = std::minmax({a.x, b.x, c.x});
        const auto [lowY, highY] = std::minmax({a.y, b.y, c.y});
        for (int row = cellFrom(lowY); row < std::min(cellFrom(highY), rows_); ++row)
            for (int column = cellFrom(lowX); column < std::min(cellFrom(highX), columns_);
                 ++column)
            {
                const Vec2 p{column + 0.5, row + 0.5};
                if (cross(b - a, p - a) < 0.0 || cross(c - b, p - b) < 0.0 ||
                    cross(a - c, p - c) < 0.0)
                    continue;
                const std::size_t cell = at(row * columns_ + column);
                if (first_[cell] == none)
                    first_[cell] = triangle;
                else if (!areNeighbours(first_[cell], triangle))
                    second_[cell] = triangle;
            }
    }

    /// The middle of a cell may lie on the edge between two triangles.
    bool areNeighbours(int triangleA, int triangleB) const
    {
        const Triangle& a = triangles_[at(triangleA)];
        const Triangle& b = triangles_[at(triangleB)];
        return std::find_first_of(a.begin(), a.end(), b.begin(), b.end()) != a.end();
    }

    /// The most cells side by side that are covered twice.
    std::vector<int> largestPlace() const
    {
        std::vector<char> isSeen(second_.size(), 0);
        std::vector<int> largest;
        for (std::size_t start = 0; start < second_.size(); ++start) {
            if (isSeen[start] || second_[start] == none)
                continue;
            std::vector<int> place{static_cast<int>(start)};
            isSeen[start] = 1;
            for (std::size_t i = 0; i < place.size(); ++i)
                for (const int next : neighboursOf(place[i]))
                    if (next != none && !isSeen[at(next)] && second_[at(next)] != none) {
                        isSeen[at(next)] = 1;
                        place.push_back(next);
                    }
            if (place.size() > largest.size())
                largest = std::move(place);
        }
        return largest;
    }

    std::array<int, 4> neighboursOf(int cell) const
    {
        const int column = cell % columns_;
        const int row = cell / columns_;
        return {column > 0 ? cell - 1 : none, column + 1 < columns_ ? cell + 1 : none,
                row > 0 ? cell - columns_ : none, row + 1 < rows_ ? cell + columns_ : none};
    }

    /// The cell of a place that is nearest to the mean of all.
    std::size_t middleOf(const std::vector<int>& place) const
    {
        const auto point = [&](int cell) {
            const int row = cell / columns_;
            return Vec2{1.0 * (cell - row * columns_), 1.0 * row};
        };
        Vec2 mean{0.0, 0.0};
        for (const int cell : place)
            mean = mean + (1.0 / static_cast<double>(place.size())) * point(cell);
        const auto distance = [&](int cell) { return length(point(cell) - mean); };
        return at(*std::min_element(place.begin(), place.end(),
                                    [&](int a, int b) { return distance(a) < distance(b); }));
    }

    std::span<const Triangle> triangles_;
    Vec2 origin_;
    double perCell_ = 0.0; ///< cells for a length of 1
    int columns_ = 0;
    int rows_ = 0;
    std::vector<int> first_;  ///< [cell]
    std::vector<int> second_; ///< [cell] the last but the first
};

} // namespace

LayoutOverlap findOverlap(std::span<const Triangle> triangles, std::span<const Vec2> uv)
{
    return CoverRaster(triangles, uv).measure();
}

} // namespace unfold3d
