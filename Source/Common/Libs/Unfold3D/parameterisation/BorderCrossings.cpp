#include "Unfold3D/parameterisation/BorderCrossings.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/parameterisation/BorderGap.h"

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

bool isBetween(double low, double value, double high)
{
    return (low <= value && value <= high) || (high <= value && value <= low);
}

/// For c on the line a b.
bool isOnSegment(Vec2 a, Vec2 b, Vec2 c)
{
    return isBetween(a.x, c.x, b.x) && isBetween(a.y, c.y, b.y);
}

bool doSegmentsMeet(Vec2 a, Vec2 b, Vec2 c, Vec2 d)
{
    const int sideOfC = orient2d(a, b, c);
    const int sideOfD = orient2d(a, b, d);
    const int sideOfA = orient2d(c, d, a);
    const int sideOfB = orient2d(c, d, b);
    if (sideOfC * sideOfD < 0 && sideOfA * sideOfB < 0)
        return true;
    return (sideOfC == 0 && isOnSegment(a, b, c)) || (sideOfD == 0 && isOnSegment(a, b, d)) ||
           (sideOfA == 0 && isOnSegment(c, d, a)) || (sideOfB == 0 && isOnSegment(c, d, b));
}

/// For two edges from one common vertex to a and b: does the shorter lie on the longer?
bool doSpokesOverlap(Vec2 common, Vec2 a, Vec2 b)
{
    if (orient2d(common, a, b) != 0)
        return false;
    return isOnSegment(common, a, b) || isOnSegment(common, b, a);
}

struct CrossingTest
{
    const Border& border;
    std::span<const Vec2> positions;

    bool doEdgesCross(int p, int q) const
    {
        const int pNext = border.next(p);
        const int qNext = border.next(q);
        const auto isSame = [&](int i, int j) { return border.vertexOf(i) == border.vertexOf(j); };
        const auto overlap = [&](int common, int a, int b) {
            return doSpokesOverlap(positions[at(common)], positions[at(a)], positions[at(b)]);
        };
        if (isSame(p, q))
            return overlap(p, pNext, qNext);
        if (isSame(pNext, q))
            return overlap(q, p, qNext);
        if (isSame(p, qNext))
            return overlap(p, pNext, q);
        if (isSame(pNext, qNext))
            return overlap(pNext, p, q);
        return doSegmentsMeet(positions[at(p)], positions[at(pNext)], positions[at(q)],
                              positions[at(qNext)]);
    }
};

} // namespace

int countBorderCrossings(const Border& border, std::span<const Vec2> positions)
{
    const CrossingTest test{border, positions};
    int count = 0;
    edgeBoxes(border, positions).forEachNear(0.0, [&](int p, int q) {
        count += test.doEdgesCross(p, q);
        return true;
    });
    return count;
}

bool doesBorderCross(const Border& border, std::span<const Vec2> positions)
{
    const CrossingTest test{border, positions};
    return !edgeBoxes(border, positions).forEachNear(0.0, [&](int p, int q) {
        return !test.doEdgesCross(p, q);
    });
}

} // namespace unfold3d
