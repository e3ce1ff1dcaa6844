#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/packing/BoxGrid.h"
#include "Unfold3D/packing/ConvexHull.h"
#include "Unfold3D/packing/FreeRectangles.h"
#include "Unfold3D/packing/Turned.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

using namespace unfold3d;

namespace
{

TEST(ExactPredicates, TellTheSideOfPointsOneUlpFromALine)
{
    const Vec2 a{0.5, 0.5};
    const Vec2 b{12.0, 12.0};
    for (const double x : {0.5, 0.7, 3.3, 24.0, 1e-3, 1e10}) {
        EXPECT_EQ(orient2d(a, b, {x, x}), 0);
        EXPECT_EQ(orient2d(a, b, {x, std::nextafter(x, 1e30)}), 1);
        EXPECT_EQ(orient2d(a, b, {std::nextafter(x, 1e30), x}), -1);
    }
}

// Integers below 2^26 have exact products in 64 bits, which is an independent judge; the common
// offset of a power of two keeps them exact and makes the plain determinant round.
RC_GTEST_PROP(ExactPredicates, AgreeWithIntegersAndDoNotDependOnTheOrder, ())
{
    const auto coordinate = [] { return *rc::gen::inRange<std::int64_t>(-1000, 1000); };
    std::int64_t p[3][2];
    Vec2 v[3];
    for (int i = 0; i < 3; ++i) {
        p[i][0] = coordinate();
        p[i][1] = coordinate();
        v[i] = {std::ldexp(1.0, 40) + static_cast<double>(p[i][0]),
                static_cast<double>(p[i][1]) - std::ldexp(1.0, 42)};
    }
    const std::int64_t det =
        (p[1][0] - p[0][0]) * (p[2][1] - p[0][1]) - (p[1][1] - p[0][1]) * (p[2][0] - p[0][0]);
    const int sign = (det > 0) - (det < 0);
    RC_ASSERT(orient2d(v[0], v[1], v[2]) == sign);
    RC_ASSERT(orient2d(v[1], v[2], v[0]) == sign);
    RC_ASSERT(orient2d(v[1], v[0], v[2]) == -sign);
}

std::vector<Vec2> anyPoints(int most)
{
    std::vector<Vec2> points;
    for (int i = *rc::gen::inRange(1, most); i > 0; --i)
        points.push_back({*rc::gen::inRange(0, 12) / 10.0, *rc::gen::inRange(0, 7) / 10.0});
    return points;
}

Box2 anyBox(int size)
{
    const auto coordinate = [&] { return static_cast<double>(*rc::gen::inRange(0, size)); };
    Box2 box;
    box.add(Vec2{coordinate(), coordinate()});
    box.add(Vec2{coordinate(), coordinate()});
    return box;
}

double areaOfBoxAlong(const std::vector<Vec2>& points, Vec2 direction)
{
    Box2 box;
    for (const Vec2 p : points)
        box.add(turned(p, {direction.x, -direction.y}));
    return box.width() * box.height();
}

RC_GTEST_PROP(ConvexHull, TurnsLeftAroundAllPoints, ())
{
    const std::vector<Vec2> points = anyPoints(30);
    const std::vector<Vec2> hull = convexHull(points);
    for (std::size_t i = 0; i < hull.size() && hull.size() > 2; ++i) {
        const Vec2 a = hull[i];
        const Vec2 b = hull[(i + 1) % hull.size()];
        RC_ASSERT(orient2d(a, b, hull[(i + 2) % hull.size()]) > 0);
        for (const Vec2 p : points)
            RC_ASSERT(orient2d(a, b, p) >= 0);
    }
    for (const Vec2 corner : hull)
        RC_ASSERT(std::find(points.begin(), points.end(), corner) != points.end());
}

RC_GTEST_PROP(ConvexHull, NoDirectionGivesASmallerBox, ())
{
    const std::vector<Vec2> points = anyPoints(20);
    const std::vector<Vec2> hull = convexHull(points);
    const Vec2 best = leastBoxDirection(hull);
    RC_ASSERT(std::abs(length(best) - 1.0) < 1e-12);
    const double area = areaOfBoxAlong(points, best);
    for (int i = 0; i < 360; ++i) {
        const double angle = i * 0.00872664626;
        RC_ASSERT(area <= areaOfBoxAlong(points, {std::cos(angle), std::sin(angle)}) + 1e-9);
    }
}

RC_GTEST_PROP(FreeRectangles, AreFreeAndLeaveNothingOut, ())
{
    constexpr int size = 12;
    FreeRectangles room(Box2{{0, 0}, {size, size}});
    std::vector<Box2> used;
    for (int i = *rc::gen::inRange(0, 8); i > 0; --i) {
        used.push_back(anyBox(size + 1));
        room.take(used.back());
    }
    const auto holds = [](const Box2& box, Vec2 p) {
        return box.low.x < p.x && p.x < box.high.x && box.low.y < p.y && p.y < box.high.y;
    };
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const Vec2 p{x + 0.5, y + 0.5};
            const auto holdsP = [&](const Box2& box) { return holds(box, p); };
            const bool isUsed = std::any_of(used.begin(), used.end(), holdsP);
            RC_ASSERT(std::any_of(room.all().begin(), room.all().end(), holdsP) == !isUsed);
        }
    for (const Box2& a : room.all())
        for (const Box2& b : room.all())
            RC_ASSERT(&a == &b || !a.contains(b));
}

RC_GTEST_PROP(BoxGrid, FindsEachMeetingBoxOnce, ())
{
    std::vector<Box2> boxes;
    for (int i = *rc::gen::inRange(0, 40); i > 0; --i)
        boxes.push_back(anyBox(*rc::gen::element(3, 20, 1000)));
    const BoxGrid grid(boxes);
    const Box2 wanted = anyBox(30);
    std::multiset<int> found;
    grid.visit(wanted, [&](int i) { found.insert(i); });
    for (std::size_t i = 0; i < boxes.size(); ++i)
        RC_ASSERT(found.count(static_cast<int>(i)) == (boxes[i].meets(wanted) ? 1U : 0U));
}

} // namespace
