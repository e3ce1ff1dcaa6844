#include "Unfold3D/packing/Outline.h"

#include "Unfold3D/base/ExactPredicates.h"

#include <algorithm>
#include <cstddef>

namespace unfold3d
{

namespace
{

/// An edge of one triangle, walked from its lower to its higher vertex.
struct Side
{
    int low;
    int high;
    int winding; ///< +1 when the triangle lies left of it, -1 right, 0 when it has no area

    friend bool operator<(const Side& a, const Side& b)
    {
        return a.low != b.low ? a.low < b.low : a.high < b.high;
    }
};

std::vector<Side> sidesOf(std::span<const Vec2> points, std::span<const Triangle> triangles,
                          std::span<const int> members)
{
    const auto at = [&](int v) { return points[static_cast<std::size_t>(v)]; };
    std::vector<Side> sides;
    sides.reserve(3 * members.size());
    for (const int t : members) {
        const Triangle& corner = triangles[static_cast<std::size_t>(t)];
        const int orientation = orient2d(at(corner[0]), at(corner[1]), at(corner[2]));
        for (std::size_t i = 0; i < 3; ++i) {
            const int a = corner[i];
            const int b = corner[(i + 1) % 3];
            // A triangle with positive area lies left of its edges as it walks them, one with
            // negative area right.
            const int winding = a < b ? orientation : -orientation;
            if (a != b)
                sides.push_back({std::min(a, b), std::max(a, b), winding});
        }
    }
    std::sort(sides.begin(), sides.end());
    return sides;
}

} // namespace

std::vector<OutlineEdge> islandOutline(std::span<const Vec2> points,
                                       std::span<const Triangle> triangles,
                                       std::span<const int> members, std::span<const int> vertices)
{
    const auto at = [&](int v) { return points[static_cast<std::size_t>(v)]; };
    const std::vector<Side> sides = sidesOf(points, triangles, members);
    std::vector<OutlineEdge> outline;
    std::vector<int> reached;
    for (std::size_t i = 0; i < sides.size();) {
        const Side& side = sides[i];
        int winding = 0;
        bool hasSurface = false;
        for (; i < sides.size() && !(side < sides[i]); ++i) {
            winding += sides[i].winding;
            hasSurface = hasSurface || sides[i].winding != 0;
        }
        reached.push_back(side.low);
        reached.push_back(side.high);
        if (winding != 0 || !hasSurface)
            outline.push_back({at(side.low), at(side.high), winding});
    }
    std::sort(reached.begin(), reached.end());
    for (const int v : vertices)
        if (!std::binary_search(reached.begin(), reached.end(), v))
            outline.push_back({at(v), at(v), 0});
    return outline;
}

} // namespace unfold3d
