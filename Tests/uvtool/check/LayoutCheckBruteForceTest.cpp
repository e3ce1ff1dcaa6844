// The check against all pairs, on layouts of whole numbers: there the pairs can be tested in
// integers, and vertices on edges, edges on edges and doubled triangles come up all the time.

#include "check/Borders.h"
#include "check/LayoutCheck.h"
#include "check/Orientation.h"

#include "uvtool/LayoutBuilders.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace uvtool::test
{
namespace
{

struct Whole
{
    std::int64_t x, y;
};
using Corners = std::array<Whole, 3>;

std::int64_t turn(Whole a, Whole b, Whole c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

Point scaled(Whole p, int xExponent, int yExponent)
{
    return {std::ldexp(float(p.x), xExponent), std::ldexp(float(p.y), yExponent)};
}

RC_GTEST_PROP(Orientation, IsExactAHairBesideALongLineAtEveryScale, ())
{
    // The line goes through the origin, so its ends fall out of the determinant, in which they
    // outweigh what is left by more bits than a double has.
    const auto number = [](std::int64_t end) { return *rc::gen::inRange(-end, end + 1); };
    const Whole step{number(2000), number(2000)};
    const std::int64_t along = number(2);
    const Whole hair{along * step.x + number(1), along * step.y + number(1)};
    const std::int64_t turn = step.y * hair.x - step.x * hair.y;

    const auto xScale = static_cast<int>(number(100));
    const auto yScale = static_cast<int>(number(100));
    const Point points[] = {scaled(hair, xScale - 36, yScale - 36),
                            scaled({1000 * step.x, 1000 * step.y}, xScale, yScale),
                            scaled({-900 * step.x, -900 * step.y}, xScale, yScale)};
    for (std::size_t i = 0; i < 3; ++i)
        RC_ASSERT(orientation(points[i], points[(i + 1) % 3], points[(i + 2) % 3]) ==
                  (turn > 0) - (turn < 0));
}

/// True when all of `other` lies on the outer side of an edge of a counter-clockwise triangle.
bool isSeparatedBy(const Corners& triangle, const Corners& other)
{
    for (std::size_t k = 0; k < 3; ++k)
        if (std::all_of(other.begin(), other.end(), [&](Whole point) {
                return turn(triangle[k], triangle[(k + 1) % 3], point) <= 0;
            }))
            return true;
    return false;
}

Corners cornersOf(const TestLayout& layout, std::size_t t)
{
    Corners corners{};
    for (std::size_t k = 0; k < 3; ++k) {
        const Point& uv = layout.uvs[layout.corners[3 * t + k]];
        corners[k] = {int(uv[0]), int(uv[1])};
    }
    if (turn(corners[0], corners[1], corners[2]) < 0)
        std::swap(corners[1], corners[2]);
    return corners;
}

struct PairCount
{
    int within = 0;
    int between = 0;
};

PairCount overlappingPairs(const TestLayout& layout)
{
    PairCount pairs;
    for (std::size_t i = 0; i < layout.islands.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) {
            const Corners a = cornersOf(layout, i);
            const Corners b = cornersOf(layout, j);
            if (turn(a[0], a[1], a[2]) == 0 || turn(b[0], b[1], b[2]) == 0 || isSeparatedBy(a, b) ||
                isSeparatedBy(b, a))
                continue;
            ++(layout.islands[i] == layout.islands[j] ? pairs.within : pairs.between);
        }
    return pairs;
}

/// Always from the whole range: rc::gen::inRange alone begins with the low end.
int below(int end)
{
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, end));
}

TestLayout randomLayout()
{
    const int size = 2 + below(7);
    TestLayout layout;
    const int uvCount = 3 + below(11);
    for (int i = 0; i < uvCount; ++i)
        layout.uvs.push_back({float(below(size)), float(below(size))});
    const auto uv = [&] { return static_cast<std::uint32_t>(below(uvCount)); };
    for (int t = 1 + below(6); t > 0; --t)
        layout.addTriangle(below(3), uv(), uv(), uv());
    return layout;
}

RC_GTEST_PROP(LayoutCheckBruteForce, FindsAnOverlapExactlyWhereTwoTrianglesOverlap, ())
{
    const TestLayout layout = randomLayout();
    const OverlapReport found = checkLayout(layout).overlaps;
    const PairCount pairs = overlappingPairs(layout);
    RC_CLASSIFY(pairs.within > 0, "within");
    RC_CLASSIFY(pairs.between > 0, "between");
    RC_CLASSIFY(pairs.within + pairs.between == 0, "none");
    RC_ASSERT((found.coveredWithin.count > 0) == (pairs.within > 0));
    RC_ASSERT((found.coveredBetween.count > 0) == (pairs.between > 0));
}

Whole whole(const Point& point)
{
    return {int(point[0]), int(point[1])};
}

bool cross(const BorderSegment& a, const BorderSegment& b)
{
    const Whole p = whole(a.from), q = whole(a.to), r = whole(b.from), s = whole(b.to);
    return turn(p, q, r) * turn(p, q, s) < 0 && turn(r, s, p) * turn(r, s, q) < 0;
}

double distance(const Point& point, const BorderSegment& segment)
{
    // Ternary search: the distance along a segment is convex.
    const auto at = [&](double t) {
        return std::hypot(segment.from[0] + t * (segment.to[0] - segment.from[0]) - point[0],
                          segment.from[1] + t * (segment.to[1] - segment.from[1]) - point[1]);
    };
    double low = 0, high = 1;
    for (int i = 0; i < 100; ++i) {
        const double third = (high - low) / 3;
        if (at(low + third) < at(high - third))
            high -= third;
        else
            low += third;
    }
    return at(low);
}

RC_GTEST_PROP(LayoutCheckBruteForce, FindsEveryCrossingAndTheSmallestGap, ())
{
    const TestLayout layout = randomLayout();
    std::vector<std::int8_t> signs;
    for (std::size_t t = 0; t < layout.islands.size(); ++t) {
        const std::int64_t area = turn(whole(layout.uvs[layout.corners[3 * t]]),
                                       whole(layout.uvs[layout.corners[3 * t + 1]]),
                                       whole(layout.uvs[layout.corners[3 * t + 2]]));
        signs.push_back(static_cast<std::int8_t>((area > 0) - (area < 0)));
    }
    const std::vector<BorderSegment> segments = findBorders(layout, signs).segments;

    PairCount crossings;
    double gap = INFINITY;
    for (std::size_t i = 0; i < segments.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) {
            const BorderSegment& a = segments[i];
            const BorderSegment& b = segments[j];
            if (cross(a, b))
                ++(a.island == b.island ? crossings.within : crossings.between);
            if (a.island != b.island)
                gap = std::min({gap, cross(a, b) ? 0.0 : INFINITY, distance(a.from, b),
                                distance(a.to, b), distance(b.from, a), distance(b.to, a)});
        }

    const LayoutCheck check = checkLayout(layout);
    RC_ASSERT(int(check.overlaps.crossingsWithin.count) == crossings.within);
    RC_ASSERT(int(check.overlaps.crossingsBetween.count) == crossings.between);
    RC_ASSERT(check.gap.exists() == std::isfinite(gap));
    if (check.gap.exists() && check.overlaps.coveredBetween.count == 0)
        RC_ASSERT(std::abs(check.gap.distance - gap) < 1e-6);
}

} // namespace
} // namespace uvtool::test
