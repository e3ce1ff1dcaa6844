#include "mesh/NearPoints.h"

#include "mesh/DisjointSets.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace uvtool
{
namespace
{

bool areNear(const Vec3d& a, const Vec3d& b, double tolerance)
{
    return std::abs(a[0] - b[0]) <= tolerance && std::abs(a[1] - b[1]) <= tolerance &&
           std::abs(a[2] - b[2]) <= tolerance;
}

/// Where points are sorted along one axis, those near in it follow each other. Sorts each such run
/// along the next axis, and joins what is left of it after the last.
class NearPointSearch
{
public:
    NearPointSearch(std::span<const Vec3d> points, double tolerance)
        : points_(points), tolerance_(tolerance), order_(points.size()), joined_(points.size())
    {
        std::iota(order_.begin(), order_.end(), 0U);
    }

    std::vector<std::uint32_t> run()
    {
        splitAlong(0, order_);
        std::vector<std::uint32_t> lowest(points_.size());
        for (std::uint32_t p = 0; p < lowest.size(); ++p)
            lowest[p] = joined_.find(p);
        return lowest;
    }

private:
    void splitAlong(std::size_t axis, std::span<std::uint32_t> run)
    {
        if (run.size() < 2)
            return;
        if (axis == 3) {
            joinNear(run);
            return;
        }
        const auto at = [&](std::uint32_t p) { return points_[p][axis]; };
        std::sort(run.begin(), run.end(), [&](std::uint32_t a, std::uint32_t b) {
            return at(a) != at(b) ? at(a) < at(b) : a < b;
        });
        for (std::size_t first = 0; first < run.size();) {
            std::size_t end = first + 1;
            while (end < run.size() && at(run[end]) - at(run[end - 1]) <= tolerance_)
                ++end;
            splitAlong(axis + 1, run.subspan(first, end - first));
            first = end;
        }
    }

    /// Sorted along z.
    void joinNear(std::span<const std::uint32_t> run)
    {
        for (std::size_t i = 0; i < run.size(); ++i)
            for (std::size_t j = i + 1;
                 j < run.size() && points_[run[j]][2] - points_[run[i]][2] <= tolerance_; ++j)
                if (areNear(points_[run[i]], points_[run[j]], tolerance_))
                    joined_.join(run[i], run[j]);
    }

    std::span<const Vec3d> points_;
    double tolerance_;
    std::vector<std::uint32_t> order_;
    DisjointSets joined_;
};

} // namespace

std::vector<std::uint32_t> lowestNearPoints(std::span<const Vec3d> points, double tolerance)
{
    return NearPointSearch(points, tolerance).run();
}

} // namespace uvtool
