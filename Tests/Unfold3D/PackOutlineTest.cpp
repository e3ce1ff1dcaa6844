#include "PackChecks.h"
#include "Patchwork.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/packing/OutlineDistance.h"
#include "Unfold3D/packing/Turned.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace patchwork;
using namespace unfold3d;

namespace
{

/// The outline of one patch of a random layout.
struct Shape
{
    Patch patch;
    OutlineTree tree;

    explicit Shape(Patch p) : patch(std::move(p)), tree(packed::outlineOf(patch)) {}

    /// Triangles over a point that is on none of their edges.
    int trianglesOver(Vec2 p) const
    {
        int count = 0;
        for (const Triangle& t : patch.triangles) {
            const auto side = [&](std::size_t i) {
                return orient2d(patch.uvs[static_cast<std::size_t>(t[i])],
                                patch.uvs[static_cast<std::size_t>(t[(i + 1) % 3])], p);
            };
            count += side(0) != 0 && side(0) == side(1) && side(1) == side(2);
        }
        return count;
    }
};

/// Any triangles between few points: folds, overlaps, repeated edges, loose vertices and all.
Patch anyPatch()
{
    const auto coordinate = rc::gen::map(rc::gen::inRange(0, 8), [](int i) { return i / 8.0; });
    Patch patch;
    const int count = *rc::gen::inRange(3, 9);
    for (int i = 0; i < count; ++i)
        patch.uvs.push_back({*coordinate, *coordinate});
    for (int t = *rc::gen::inRange(1, 8); t > 0; --t) {
        const auto corner = rc::gen::inRange(0, count);
        patch.triangles.push_back({*corner, *corner, *corner});
    }
    return patch;
}

/// A point on no line through two points of the grid.
Vec2 anyPoint()
{
    const auto coordinate = [] { return *rc::gen::inRange(-1000, 9000) / 8000.0; };
    return {coordinate() + 0.00001234567, coordinate() + 0.00002718281};
}

double leastDistance(const PlacedOutline& a, const PlacedOutline& b)
{
    double least = std::numeric_limits<double>::infinity();
    for (const OutlineEdge& e : a.outline->edges())
        for (const OutlineEdge& f : b.outline->edges())
            least = std::min(
                least, packed::distance(e.from + a.at, e.to + a.at, f.from + b.at, f.to + b.at));
    return least;
}

TEST(PackOutline, InnerEdgesAreLeftOutAndFoldsAreNot)
{
    EXPECT_EQ(Shape(rectangle(1, 1)).tree.edges().size(), 4U);
    EXPECT_EQ(Shape(star(6, 0.5)).tree.edges().size(), 12U);
    EXPECT_EQ(Shape(frame(0.5)).tree.edges().size(), 8U);

    const Shape folded(foldedStrip());
    const auto crests =
        std::count_if(folded.tree.edges().begin(), folded.tree.edges().end(),
                      [](const OutlineEdge& e) { return std::abs(e.winding) == 2; });
    EXPECT_EQ(crests, 1);

    const Shape dot(Patch{{{0.5, 0.5}}, {}});
    ASSERT_EQ(dot.tree.edges().size(), 1U);
    EXPECT_EQ(dot.tree.edges()[0].from, dot.tree.edges()[0].to);
}

RC_GTEST_PROP(PackOutline, CoversWhatTheTrianglesCover, ())
{
    const Shape shape(anyPatch());
    const Vec2 p = anyPoint();
    const Vec2 at{*rc::gen::element(0.0, 16.0), 0.0};
    RC_ASSERT(covers({&shape.tree, at}, p + at) == (shape.trianglesOver(p) > 0));
}

RC_GTEST_PROP(PackOutline, CloserIsWhatNoPairOfEdgesContradicts, ())
{
    const Shape a(anyPatch());
    const Shape b(anyPatch());
    const PlacedOutline placedA{&a.tree, anyPoint()};
    const PlacedOutline placedB{&b.tree, anyPoint()};
    const double least = leastDistance(placedA, placedB);
    RC_ASSERT(isCloserThan(placedA, placedB, least + 1e-9));
    RC_ASSERT(!isCloserThan(placedA, placedB, least - 1e-9) || least <= 1e-9);
}

RC_GTEST_PROP(PackOutline, AFreeWayEndsExactlyWhereTheDistanceIsReached, ())
{
    const Shape a(anyPatch());
    const Shape b(anyPatch());
    const double angle = *rc::gen::inRange(0, 360) * 0.0174533;
    const Vec2 direction{std::cos(angle), std::sin(angle)};
    const double distance = *rc::gen::element(1e-6, 0.01, 0.2);
    const PlacedOutline standing{&b.tree, {}};
    PlacedOutline moving{&a.tree, -2.0 * direction + 0.5 * anyPoint()};
    RC_PRE(leastDistance(moving, standing) > distance);

    const FreeWay way = freeWay(moving, standing, direction, distance, 3.0);
    RC_ASSERT(way.length <= 3.0);
    const auto distanceAfter = [&](double length) {
        return leastDistance({&a.tree, moving.at + length * direction}, standing);
    };
    for (int i = 0; i <= 20; ++i)
        RC_ASSERT(distanceAfter(way.length * i / 20.0) >= distance - 1e-9);
    if (!way.isBlocked)
        return;
    RC_ASSERT(std::abs(distanceAfter(way.length) - distance) < 1e-9);
    RC_ASSERT(std::abs(length(way.normal) - 1.0) < 1e-9);
    RC_ASSERT(dot(way.normal, direction) <= 1e-9);
    // Off along the normal is away.
    const Vec2 off = moving.at + way.length * direction + 1e-7 * way.normal;
    RC_ASSERT(leastDistance({&a.tree, off}, standing) >= distance - 1e-9);
}

} // namespace
