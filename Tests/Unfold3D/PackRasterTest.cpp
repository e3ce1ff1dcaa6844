#include "PackChecks.h"
#include "Patchwork.h"

#include "Unfold3D/packing/BitSheet.h"
#include "Unfold3D/packing/ShapeRaster.h"
#include "Unfold3D/packing/Turned.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <vector>

using namespace patchwork;
using namespace unfold3d;
using packed::outlineOf;

namespace
{

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
