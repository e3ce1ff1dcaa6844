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

/// The barrier's value and derivatives at x = distance / reach < 1: -(x - 1)^2 ln x, and below a
/// small x the parabola that continues it. A gap that begins with next to nothing is open after one
/// Newton step then, where the logarithm would let it double with each.
struct Barrier
{
    double value;
    double slope;
    double curvature;

    explicit Barrier(double x)
    {
        constexpr double parabolaEnd = 0.02;
        const double inside = std::max(x, parabolaEnd);
        const double y = (inside - 1.0) / inside;
        const double logarithm = std::log(inside);
        const double beyond = x - inside;
        curvature = y * (y - 4.0) - 2.0 * logarithm;
        slope = (1.0 - inside) * (2.0 * logarithm + y);
        value = -(inside - 1.0) * (inside - 1.0) * logarithm +
                beyond * (slope + 0.5 * beyond * curvature);
        slope += beyond * curvature;
    }
};

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
    if (border_.touches(point, edge) ||
        (isFixed(point) && isFixed(edge) && isFixed(border_.next(edge))))
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
        sum += forceAt(gap.point) * reach * Barrier(gap.distance / reach).value;
    });
    return sum;
}

void BorderBarrier::addSprings(std::span<const Vec2> positions, std::vector<Spring>& springs) const
{
    forEachContact(positions, 1.0, [&](const BorderGap& gap, double reach) {
        const Barrier barrier(gap.distance / reach);
        const double force = forceAt(gap.point);
        springs.push_back(
            gap.spring(border_, force * barrier.slope, force / reach * barrier.curvature));
    });
}

void BorderBarrier::addPairsWithin(std::span<const Vec2> positions, double factor,
                                   std::vector<NodePair>& pairs) const
{
    forEachContact(positions, factor, [&](const BorderGap& gap, double) {
        const int vertex = border_.vertexOf(gap.point);
        const int begin = border_.vertexOf(gap.edge);
        const int end = border_.vertexOf(border_.next(gap.edge));
        pairs.push_back({vertex, begin});
        pairs.push_back({vertex, end});
        // Where nothing of a triangle moves, the pattern doesn't know its edges.
        if (isFixed(gap.edge) && isFixed(border_.next(gap.edge)))
            pairs.push_back({begin, end});
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
