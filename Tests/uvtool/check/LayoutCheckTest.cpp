#include "check/LayoutCheck.h"

#include "uvtool/LayoutBuilders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace uvtool::test
{
namespace
{

constexpr UVBox unitBox{{0, 0}, {1, 1}};

TEST(LayoutCheck, PassesAGridAndMeasuresIt)
{
    const TestLayout layout = gridLayout(7, {0.25F, 0.125F}, 0.5F);
    const LayoutCheck check = checkLayout(layout, {{unitBox}});
    EXPECT_TRUE(check.isSound());
    EXPECT_EQ(check.triangles, 98U);
    EXPECT_EQ(check.islands, 1U);
    EXPECT_EQ(check.degenerate.count, 0U);
    EXPECT_NEAR(check.area, 0.25, 1e-7);
    EXPECT_FALSE(check.gap.exists());
    EXPECT_FLOAT_EQ(float(check.margin), 0.125F);
}

TEST(LayoutCheck, FindsNothingInAnEmptyLayout)
{
    const LayoutCheck check = checkLayout(TestLayout{}, {{unitBox}});
    EXPECT_TRUE(check.isSound());
    EXPECT_EQ(check.islands, 0U);
    EXPECT_TRUE(std::isinf(check.margin));
    EXPECT_TRUE(check.bounds.isEmpty());
}

TEST(LayoutCheck, CountsFlipsAgainstTheLargerPartOfTheIsland)
{
    TestLayout layout = gridLayout(4);
    std::swap(layout.corners[1], layout.corners[2]);
    LayoutCheck check = checkLayout(layout);
    EXPECT_EQ(check.flipped.count, 1U);
    EXPECT_EQ(check.flipped.first, 0);
    EXPECT_EQ(check.mirroredIslands, 0U);

    for (Point& uv : layout.uvs)
        uv[0] = -uv[0];
    check = checkLayout(layout);
    EXPECT_EQ(check.flipped.count, 1U) << "a mirrored island flips where it did before";
    EXPECT_EQ(check.mirroredIslands, 1U);
    EXPECT_FALSE(check.isSound());
}

TEST(LayoutCheck, LeavesTrianglesWithoutAnAreaOutOfFlipsAndOverlaps)
{
    TestLayout layout = gridLayout(3);
    layout.addTriangle(0, 0, 5, 10); // along a diagonal of the grid
    layout.addTriangle(0, 2, 2, 9);
    const LayoutCheck check = checkLayout(layout);
    EXPECT_EQ(check.degenerate.count, 2U);
    EXPECT_EQ(check.degenerate.first, 18);
    EXPECT_TRUE(check.isSound());
}

TEST(LayoutCheck, NamesTheFirstTriangleThatIsNotFinite)
{
    for (const float bad : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
        TestLayout layout = gridLayout(3);
        layout.uvs[15] = {0.5F, bad};
        const LayoutCheck check = checkLayout(layout, {{unitBox}});
        EXPECT_EQ(check.nonFinite.count, 2U);
        EXPECT_EQ(check.nonFinite.first, 16);
        EXPECT_FALSE(check.isSound());
        EXPECT_EQ(check.overlaps.coveredWithin.count, 0U);
        EXPECT_FLOAT_EQ(float(check.margin), 0.0F);
    }
}

TEST(LayoutCheck, TellsOverlapsFromTouching)
{
    struct Case
    {
        const char* name;
        Point lo, hi; ///< of the second rectangle; the first is the unit square
        bool covered, crossing;
        double gap;
    };
    const float below1 = std::nextafter(1.0F, 0.0F);
    const Case cases[] = {{"apart", {1.25F, 0}, {2, 1}, false, false, 0.25},
                          {"sharing a side", {1, 0}, {2, 1}, false, false, 0.0},
                          {"over by the last bit", {below1, 0.25F}, {2, 0.75F}, true, true, 0.0},
                          {"inside", {0.25F, 0.25F}, {0.5F, 0.375F}, true, false, 0.0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestLayout layout;
        layout.addRectangle(0, {0, 0}, {1, 1});
        layout.addRectangle(1, c.lo, c.hi);
        const LayoutCheck check = checkLayout(layout);
        EXPECT_EQ(check.overlaps.coveredBetween.count > 0, c.covered);
        EXPECT_EQ(check.overlaps.crossingsBetween.count > 0, c.crossing);
        EXPECT_EQ(check.overlaps.coveredWithin.count, 0U);
        EXPECT_EQ(check.isSound(), !c.covered);
        EXPECT_DOUBLE_EQ(check.gap.distance, c.gap);
        EXPECT_EQ(check.gap.island, 0);
        EXPECT_EQ(check.gap.other, 1);
    }
}

TEST(LayoutCheck, FindsAFanThatGoesTwiceAroundItsMiddle)
{
    // No flip and no border inside: the second sheet is only seen from the border.
    TestLayout layout;
    layout.uvs.push_back({0, 0});
    const std::uint32_t steps = 20;
    for (std::uint32_t i = 0; i < steps; ++i) {
        const double angle = 4.0 * 3.14159265358979 * i / steps;
        const double radius = 1.0 + 0.01 * i;
        layout.uvs.push_back({float(radius * std::cos(angle)), float(radius * std::sin(angle))});
    }
    for (std::uint32_t i = 0; i < steps; ++i)
        layout.addTriangle(0, 0, 1 + i, 1 + (i + 1) % steps);
    const LayoutCheck check = checkLayout(layout);
    EXPECT_EQ(check.flipped.count, 0U);
    EXPECT_GT(check.overlaps.coveredWithin.count, 0U);
}

TEST(LayoutCheck, MeasuresEachIslandAgainstTheBoxThatSuitsIt)
{
    const UVBox tiles[] = {unitBox, {{1, 0}, {2, 1}}};
    TestLayout layout;
    layout.addRectangle(0, {0.125F, 0.25F}, {0.5F, 0.75F});
    layout.addRectangle(1, {1.0625F, 0.25F}, {1.5F, 0.75F});
    EXPECT_DOUBLE_EQ(checkLayout(layout, tiles).margin, 0.0625);

    layout.addRectangle(2, {0.75F, 0.25F}, {1.03125F, 0.5F});
    const LayoutCheck check = checkLayout(layout, tiles);
    EXPECT_DOUBLE_EQ(check.margin, -0.03125);
    EXPECT_EQ(check.outside.count, 1U);
    EXPECT_EQ(check.outside.first, 2);
}

TEST(LayoutCheck, StopsCountingWhereThereIsNoEndOfOverlaps)
{
    TestLayout layout;
    for (std::int32_t island = 0; island < 3000; ++island)
        layout.addRectangle(island, {0, 0}, {1, 1});
    const LayoutCheck check = checkLayout(layout);
    EXPECT_FALSE(check.isSound());
    EXPECT_FALSE(check.overlaps.countedAll);
}

} // namespace
} // namespace uvtool::test
