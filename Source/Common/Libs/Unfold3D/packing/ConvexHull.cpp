#include "Unfold3D/packing/ConvexHull.h"

#include "Unfold3D/base/ExactPredicates.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace unfold3d
{

namespace
{

/// A box must be smaller by this share to count as smaller.
constexpr double betterBox = 1.0 - 1e-9;

bool isLeftOrBelow(Vec2 a, Vec2 b)
{
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

/// Adds the points to a chain that turns left only (Andrew's monotone chain).
template <class Iterator>
void addChain(Iterator first, Iterator last, std::vector<Vec2>& hull)
{
    const std::size_t start = hull.size();
    for (; first != last; ++first) {
        while (hull.size() >= start + 2 &&
               orient2d(hull[hull.size() - 2], hull.back(), *first) <= 0)
            hull.pop_back();
        hull.push_back(*first);
    }
    hull.pop_back(); // starts the other chain
}

/// The extent of the hull along the direction that each of four pointers follows: the corner that
/// is farthest in it. Turning the direction counter-clockwise moves the corner on, never back.
class Caliper
{
public:
    double farthest(const std::vector<Vec2>& hull, Vec2 direction)
    {
        for (std::size_t steps = 0; steps < hull.size(); ++steps) {
            const std::size_t next = (corner_ + 1) % hull.size();
            if (dot(hull[next], direction) < dot(hull[corner_], direction))
                break;
            corner_ = next;
        }
        return dot(hull[corner_], direction);
    }
    void start(const std::vector<Vec2>& hull, Vec2 direction)
    {
        for (std::size_t i = 0; i < hull.size(); ++i)
            if (dot(hull[i], direction) > dot(hull[corner_], direction))
                corner_ = i;
    }

private:
    std::size_t corner_ = 0;
};

struct Extent
{
    double along;
    double across;
};

class Calipers
{
public:
    Calipers(const std::vector<Vec2>& hull, Vec2 direction) : hull_(hull)
    {
        for (std::size_t i = 0; i < 4; ++i)
            calipers_[i].start(hull, quarter(direction, i));
    }
    /// `direction` turns counter-clockwise from call to call.
    Extent extent(Vec2 direction)
    {
        std::array<double, 4> far{};
        for (std::size_t i = 0; i < 4; ++i)
            far[i] = calipers_[i].farthest(hull_, quarter(direction, i));
        return {far[0] + far[2], far[1] + far[3]};
    }

private:
    static Vec2 quarter(Vec2 d, std::size_t quarters)
    {
        for (; quarters > 0; --quarters)
            d = {-d.y, d.x};
        return d;
    }

    const std::vector<Vec2>& hull_;
    std::array<Caliper, 4> calipers_;
};

} // namespace

std::vector<Vec2> convexHull(std::vector<Vec2> points)
{
    std::sort(points.begin(), points.end(), isLeftOrBelow);
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.size() < 2)
        return points;
    std::vector<Vec2> hull;
    addChain(points.begin(), points.end(), hull);
    addChain(points.rbegin(), points.rend(), hull);
    return hull;
}

double perimeter(const std::vector<Vec2>& hull)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < hull.size(); ++i)
        sum += length(hull[(i + 1) % hull.size()] - hull[i]);
    return sum;
}

Vec2 longestSide(const std::vector<Vec2>& hull)
{
    Vec2 best{1.0, 0.0};
    double longest = 0.0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Vec2 side = hull[(i + 1) % hull.size()] - hull[i];
        const double size = length(side);
        if (size * betterBox <= longest)
            continue;
        longest = size;
        best = (1.0 / size) * side;
    }
    return best;
}

Vec2 leastBoxDirection(const std::vector<Vec2>& hull)
{
    if (hull.size() < 3)
        return longestSide(hull);
    Vec2 best{1.0, 0.0};
    Extent bestExtent = Calipers(hull, best).extent(best);
    Calipers calipers(hull, hull[1] - hull[0]);
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Vec2 side = hull[(i + 1) % hull.size()] - hull[i];
        const double size = length(side);
        if (size <= 0.0)
            continue;
        const Vec2 direction = (1.0 / size) * side;
        const Extent extent = calipers.extent(direction);
        if (extent.along * extent.across < betterBox * bestExtent.along * bestExtent.across) {
            best = direction;
            bestExtent = extent;
        }
    }
    return bestExtent.along >= bestExtent.across ? best : Vec2{-best.y, best.x};
}

} // namespace unfold3d
