#include "PackChecks.h"
#include "Patchwork.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/packing/BitSheet.h"
#include "Unfold3D/packing/OutlineDistance.h"
#include "Unfold3D/packing/ShapeRaster.h"
#include "Unfold3D/packing/Turned.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <set>
#include <vector>

using namespace patchwork;
using namespace unfold3d;
using packed::outlineOf;

namespace
{

/// The outline of one patch of a random layout.
struct Shape
{
    Patch patch;
    OutlineTree tree;

    explicit Shape(Patch p) : patch(std::move(p)), tree(outlineOf(patch)) {}

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

bool hasCell(const ShapeRaster& shape, int x, int y)
{
    for (const CellRun& run : shape.runs)
        if (run.row == y && run.begin <= x && x < run.end)
            return true;
    return false;
}

Patch anyKnownPatch()
{
    return *rc::gen::element(rectangle(1.0, 0.3), frame(0.6), clamp(0.2), star(5, 0.3),
                             foldedStrip(), line(1.0));
}

RC_GTEST_PROP(PackRaster, EveryPointWithinTheRadiusIsInACell, ())
{
    const Patch patch = anyKnownPatch();
    const double angle = *rc::gen::inRange(0, 360) * 0.0174533;
    const Vec2 turn = 0.7 * Vec2{std::cos(angle), std::sin(angle)};
    const double radius = *rc::gen::element(1e-7, 0.01, 0.1);
    const double cell = *rc::gen::element(0.003, 0.02, 0.11, 5.0);
    const ShapeRaster shape = rasterShape(outlineOf(patch), turn, radius, cell);

    const auto share = [] { return *rc::gen::inRange(0, 1001) / 1000.0; };
    for (const Triangle& t : patch.triangles) {
        const auto at = [&](std::size_t i) { return patch.uvs[static_cast<std::size_t>(t[i])]; };
        double s = share();
        double r = share();
        if (s + r > 1.0) {
            s = 1.0 - s;
            r = 1.0 - r;
        }
        const Vec2 inside = at(0) + s * (at(1) - at(0)) + r * (at(2) - at(0));
        const double around = share() * 6.28;
        const Vec2 near =
            turned(inside, turn) + 0.999 * radius * Vec2{std::cos(around), std::sin(around)};
        const Vec2 inCells = (1.0 / cell) * (near - shape.corner);
        RC_ASSERT(hasCell(shape, static_cast<int>(std::floor(inCells.x)),
                          static_cast<int>(std::floor(inCells.y))));
    }
}

TEST(PackRaster, IsNotMuchLargerThanTheShape)
{
    const ShapeRaster square = rasterShape(outlineOf(rectangle(0.998, 0.998)), {1, 0}, 1e-3, 0.1);
    EXPECT_EQ(square.cellCount, 100);
    EXPECT_EQ(square.width, 10);
    // The hole of 0.6 keeps all cells but those that its sides touch.
    const ShapeRaster ring = rasterShape(outlineOf(frame(0.6)), {1, 0}, 1e-3, 0.01);
    EXPECT_LE(ring.cellCount, 102 * 102 - 56 * 56);
    EXPECT_GE(ring.cellCount, 6400);
    // Rounded corners: all within 1 of a point.
    const std::vector<OutlineEdge> dot{{{0, 0}, {0, 0}, 0}};
    EXPECT_NEAR(static_cast<double>(rasterShape(dot, {1, 0}, 1.0, 0.01).cellCount), 3.1416e4, 900);
}

/// A sheet that is looked through cell by cell.
struct PlainSheet
{
    int width;
    int height;
    std::set<std::array<int, 2>> taken;

    static std::vector<std::array<int, 2>> cellsOf(const ShapeRaster& shape, Cell at)
    {
        std::vector<std::array<int, 2>> cells;
        for (const CellRun& run : shape.runs)
            for (int x = run.begin; x < run.end; ++x)
                cells.push_back({at.x + x, at.y + run.row});
        return cells;
    }
    std::optional<Cell> lowestFit(const ShapeRaster& shape, int topLimit) const
    {
        for (int y = 0; y + shape.height <= std::min(height, topLimit); ++y)
            for (int x = 0; x + shape.width <= width; ++x) {
                const auto cells = cellsOf(shape, {x, y});
                if (std::none_of(cells.begin(), cells.end(),
                                 [&](const auto& cell) { return taken.contains(cell); }))
                    return Cell{x, y};
            }
        return std::nullopt;
    }
    void occupy(const ShapeRaster& shape, Cell at)
    {
        for (const auto& cell : cellsOf(shape, at))
            taken.insert(cell);
    }
    long long freeCells() const
    {
        return static_cast<long long>(width) * height - static_cast<long long>(taken.size());
    }
};

RC_GTEST_PROP(PackSheet, FindsTheSamePlacesAsASearchCellByCell, ())
{
    const int width = *rc::gen::element(5, 63, 64, 65, 150);
    const int height = *rc::gen::inRange(4, 70);
    std::vector<ShapeRaster> shapes;
    int longest = 1;
    for (int count = *rc::gen::inRange(1, 25); count > 0; --count) {
        const double angle = *rc::gen::inRange(0, 90) * 0.0174533;
        const double size = *rc::gen::inRange(1, 60);
        shapes.push_back(rasterShape(outlineOf(anyKnownPatch()),
                                     size * Vec2{std::cos(angle), std::sin(angle)}, 0.1, 1.0));
        for (const CellRun& run : shapes.back().runs)
            longest = std::max(longest, run.length());
    }
    BitSheet sheet(width, height, longest);
    PlainSheet plain{width, height, {}};
    for (const ShapeRaster& shape : shapes) {
        const int topLimit = *rc::gen::inRange(0, 100);
        const std::optional<Cell> place = sheet.lowestFit(ShapeProbe(shape), topLimit);
        const std::optional<Cell> expected = plain.lowestFit(shape, topLimit);
        RC_ASSERT(place.has_value() == expected.has_value());
        if (!place)
            continue;
        RC_ASSERT(place->x == expected->x);
        RC_ASSERT(place->y == expected->y);
        sheet.occupy(shape, *place);
        plain.occupy(shape, *place);
        RC_ASSERT(sheet.freeCells() == plain.freeCells());
    }
}

} // namespace
