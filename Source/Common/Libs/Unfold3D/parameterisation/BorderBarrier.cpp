#include "Unfold3D/parameterisation/BorderBarrier.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// The reach is at most this share of the way along the border: a gap may narrow towards its end at
/// this slope before its sides feel each other.
constexpr double reachPerWay = 0.2;

// The barrier as a function of x = distance / reach, for 0 < x < 1.
double barrierValue(double x)
{
    return -(x - 1.0) * (x - 1.0) * std::log(x);
}
double barrierSlope(double x)
{
    return -(x - 1.0) * (2.0 * std::log(x) + (x - 1.0) / x);
}
double barrierCurvature(double x)
{
    const double y = (x - 1.0) / x;
    return y * (y - 4.0) - 2.0 * std::log(x);
}

} // namespace

/// Calls visit(gap, reach) for the gaps outside the surface that are within `factor` times their
/// reach.
template <class Visit>
void BorderBarrier::forEachContact(std::span<const Vec2> positions, double factor,
                                   const Visit& visit) const
{
    // Every point is the beginning of one edge.
    edgeBoxes(border_, positions).forEachNear(factor * reach_, [&](int p, int q) {
        visitContact(positions, p, q, factor, visit);
        visitContact(positions, q, p, factor, visit);
        return true;
    });
}

template <class Visit>
void BorderBarrier::visitContact(std::span<const Vec2> positions, int point, int edge,
                                 double factor, const Visit& visit) const
{
    if (border_.touches(point, edge))
        return;
    const BorderGap gap = gapBetween(border_, positions, point, edge);
    if (!(gap.distance < factor * reach_))
        return;
    const double reach = std::min(reach_, reachPerWay * border_.wayToEdge(point, edge));
    if (gap.distance < factor * reach && gap.isOutside(border_, positions))
        visit(gap, reach);
}

/// For the piece of border that a point stands for.
double BorderBarrier::forceAt(int point) const
{
    return pressure_ * 0.5 *
           (border_.restLength(point) + border_.restLength(border_.previous(point)));
}

double BorderBarrier::energy(std::span<const Vec2> positions) const
{
    double sum = 0.0;
    forEachContact(positions, 1.0, [&](const BorderGap& gap, double reach) {
        sum += forceAt(gap.point) * reach * barrierValue(gap.distance / reach);
    });
    return sum;
}

void BorderBarrier::addSprings(std::span<const Vec2> positions, std::vector<Spring>& springs) const
{
    forEachContact(positions, 1.0, [&](const BorderGap& gap, double reach) {
        const double x = gap.distance / reach;
        const double force = forceAt(gap.point);
        springs.push_back(
            gap.spring(border_, force * barrierSlope(x), force / reach * barrierCurvature(x)));
    });
}

void BorderBarrier::addPairsWithin(std::span<const Vec2> positions, double factor,
                                   std::vector<NodePair>& pairs) const
{
    forEachContact(positions, factor, [&](const BorderGap& gap, double) {
        const int vertex = border_.vertexOf(gap.point);
        pairs.push_back({vertex, border_.vertexOf(gap.edge)});
        pairs.push_back({vertex, border_.vertexOf(border_.next(gap.edge))});
    });
}

bool BorderBarrier::isFairMove(std::span<const Vec2> before, std::span<const Vec2> after) const
{
    constexpr double fairShare = 0.3;
    bool isFair = true;
    forEachContact(after, fairShare, [&](const BorderGap& gap, double reach) {
        const double had = gapBetween(border_, before, gap.point, gap.edge).distance;
        isFair &= gap.distance >= fairShare * std::min(had, reach);
    });
    return isFair;
}

double BorderBarrier::leastDistance(std::span<const Vec2> positions) const
{
    double least = reach_;
    forEachContact(positions, 1.0, [&](const BorderGap& gap, double reach) {
        if (reach == reach_)
            least = std::min(least, gap.distance);
    });
    return least;
}

} // namespace unfold3d
