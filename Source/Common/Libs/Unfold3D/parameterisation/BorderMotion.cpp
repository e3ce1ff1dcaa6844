#include "Unfold3D/parameterisation/BorderMotion.h"

#include "Unfold3D/parameterisation/BorderGap.h"

#include <cmath>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A point p and a segment from a to b that all move evenly from t = 0 on.
struct MovingPair
{
    Vec2 toPoint; ///< from a to p
    Vec2 toPointMotion;
    Vec2 along; ///< from a to b
    Vec2 alongMotion;

    bool isOnSegmentAt(double t) const
    {
        // Rounding of t must not hide a meeting at an end.
        constexpr double slack = 1e-6;
        const Vec2 edge = along + t * alongMotion;
        const double share = dot(toPoint + t * toPointMotion, edge) / dot(edge, edge);
        return share >= -slack && share <= 1.0 + slack;
    }

    /// When they meet; `none` when they don't before that.
    double firstMeeting(double none) const
    {
        // The three are on one line at the roots of a t^2 + b t + c.
        const double a = cross(alongMotion, toPointMotion);
        const double b = cross(along, toPointMotion) + cross(alongMotion, toPoint);
        const double c = cross(along, toPoint);
        const double discriminant = b * b - 4.0 * a * c;
        if (!(discriminant >= 0.0))
            return none;
        const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
        double early = c / q;
        double late = q / a;
        if (!(early < late))
            std::swap(early, late);
        for (const double t : {early, late})
            if (t >= 0.0 && t < none && isOnSegmentAt(t))
                return t;
        return none;
    }
};

/// Calls visit(point, edge, pair) for all that come near each other up to `most` times the motion.
template <class Visit>
void forEachMovingPair(const Border& border, std::span<const Vec2> positions,
                       std::span<const Vec2> motion, double most, const Visit& visit)
{
    std::vector<Box2> boxes(positions.size());
    for (int p = 0; p < border.size(); ++p)
        for (const int end : {p, border.next(p)}) {
            boxes[at(p)].add(positions[at(end)]);
            boxes[at(p)].add(positions[at(end)] + most * motion[at(end)]);
        }
    const auto visitPair = [&](int point, int edge) {
        if (border.touches(point, edge))
            return;
        const int end = border.next(edge);
        visit(point, edge,
              MovingPair{
                  positions[at(point)] - positions[at(edge)], motion[at(point)] - motion[at(edge)],
                  positions[at(end)] - positions[at(edge)], motion[at(end)] - motion[at(edge)]});
    };
    // Every point is the beginning of one edge.
    BoxPairs(std::move(boxes)).forEachNear(0.0, [&](int p, int q) {
        visitPair(p, q);
        visitPair(q, p);
        return true;
    });
}

} // namespace

double firstContact(const Border& border, std::span<const Vec2> positions,
                    std::span<const Vec2> motion, double most)
{
    double first = most;
    forEachMovingPair(border, positions, motion, most,
                      [&](int, int, const MovingPair& pair) { first = pair.firstMeeting(first); });
    return first;
}

void addBrakes(const Border& border, std::span<const Vec2> positions, std::span<const Vec2> motion,
               double most, double work, std::vector<Spring>& springs)
{
    forEachMovingPair(border, positions, motion, most,
                      [&](int point, int edge, const MovingPair& pair) {
                          if (pair.firstMeeting(most) >= most)
                              return;
                          const BorderGap gap = gapBetween(border, positions, point, edge);
                          springs.push_back(gap.brake(border, work));
                      });
}

} // namespace unfold3d
