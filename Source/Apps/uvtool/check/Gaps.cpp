#include "check/Gaps.h"

#include "check/Orientation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace uvtool
{
namespace
{

using Point = std::array<float, 2>;

double squaredDistance(const Point& point, const BorderSegment& segment)
{
    const double alongX = double(segment.to[0]) - segment.from[0];
    const double alongY = double(segment.to[1]) - segment.from[1];
    const double x = double(point[0]) - segment.from[0];
    const double y = double(point[1]) - segment.from[1];
    const double length2 = alongX * alongX + alongY * alongY;
    const double t =
        length2 > 0.0 ? std::clamp((x * alongX + y * alongY) / length2, 0.0, 1.0) : 0.0;
    const double dx = x - t * alongX;
    const double dy = y - t * alongY;
    return dx * dx + dy * dy;
}

bool touch(const BorderSegment& a, const BorderSegment& b)
{
    return orientation(a.from, a.to, b.from) * orientation(a.from, a.to, b.to) <= 0 &&
           orientation(b.from, b.to, a.from) * orientation(b.from, b.to, a.to) <= 0 &&
           a.box().meets(b.box());
}

double squaredDistance(const BorderSegment& a, const BorderSegment& b)
{
    if (touch(a, b))
        return 0.0;
    return std::min({squaredDistance(a.from, b), squaredDistance(a.to, b),
                     squaredDistance(b.from, a), squaredDistance(b.to, a)});
}

double squaredDistance(const UVBox& a, const UVBox& b)
{
    double sum = 0.0;
    for (std::size_t axis = 0; axis < 2; ++axis) {
        const double apart =
            std::max({0.0, double(a.lo[axis]) - b.hi[axis], double(b.lo[axis]) - a.hi[axis]});
        sum += apart * apart;
    }
    return sum;
}

struct Nearest
{
    double squared = std::numeric_limits<double>::infinity();
    std::int32_t island = -1;
    std::int32_t other = -1;

    void offer(const BorderSegment& a, const BorderSegment& b)
    {
        const double candidate = squaredDistance(a, b);
        if (candidate < squared)
            *this = {candidate, std::min(a.island, b.island), std::max(a.island, b.island)};
    }
};

/// Neighbours along the curve of the tree are near each other, which gives the search that follows
/// a good distance to beat.
Nearest nearestAlongCurve(const Borders& borders)
{
    Nearest nearest;
    const auto order = borders.tree.order();
    for (std::size_t i = 1; i < order.size(); ++i) {
        const BorderSegment& a = borders.segments[order[i - 1]];
        const BorderSegment& b = borders.segments[order[i]];
        if (a.island != b.island)
            nearest.offer(a, b);
    }
    return nearest;
}

} // namespace

IslandGap smallestGap(const Borders& borders)
{
    Nearest nearest = nearestAlongCurve(borders);
    if (nearest.island < 0)
        return {};
    for (const BorderSegment& segment : borders.segments) {
        const UVBox box = segment.box();
        borders.tree.visit(
            [&](const UVBox& node, std::int32_t island) {
                return island != segment.island && squaredDistance(box, node) < nearest.squared;
            },
            [&](std::uint32_t item) { nearest.offer(segment, borders.segments[item]); });
    }
    return {std::sqrt(nearest.squared), nearest.island, nearest.other};
}

} // namespace uvtool
