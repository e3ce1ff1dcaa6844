#include "Unfold3D/base/Segments.h"

#include "Unfold3D/base/ExactPredicates.h"

namespace unfold3d
{

namespace
{

bool isBetween(double low, double value, double high)
{
    return (low <= value && value <= high) || (high <= value && value <= low);
}

/// For c on the line a b.
bool isOnSegment(Vec2 a, Vec2 b, Vec2 c)
{
    return isBetween(a.x, c.x, b.x) && isBetween(a.y, c.y, b.y);
}

} // namespace

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

bool doSpokesOverlap(Vec2 common, Vec2 a, Vec2 b)
{
    if (orient2d(common, a, b) != 0)
        return false;
    return isOnSegment(common, a, b) || isOnSegment(common, b, a);
}

} // namespace unfold3d
