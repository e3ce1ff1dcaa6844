#include "PackChecks.h"
#include "PackRun.h"
#include "Patchwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace patchwork;
using packed::bounds;
using packed::boundsOfPatch;
using unfold3d::Box2;

namespace
{

/// The result of a pack that must succeed.
struct Packed
{
    Layout layout;
    std::vector<Vec2> uvs;
    std::string warning;

    Packed(Layout before, const PackKeys& keys) : layout(std::move(before))
    {
        PackRun run(layout);
        run.pack(keys);
        EXPECT_FALSE(run.hasError()) << run.error();
        warning = run.warning();
        uvs = run.exportUVs();
    }

    double area(int patch) const { return packed::areaInUV(layout, uvs, patch); }
    double areaBefore(int patch) const { return packed::areaInUV(layout, layout.uvs, patch); }
    double areaInSpace(int patch) const { return packed::areaInSpace(layout, patch); }
};

/// The direction of the first edge of a patch of rectangle(), in degrees from 0 to 360.
double directionOf(const std::vector<Vec2>& uvs)
{
    const double degrees = std::atan2(uvs[1].y - uvs[0].y, uvs[1].x - uvs[0].x) * 180.0 / M_PI;
    return degrees < -1e-9 ? degrees + 360.0 : std::abs(degrees);
}

PackKeys inPlace()
{
    PackKeys keys;
    keys.translate = false;
    return keys;
}

TEST(PackModes, EachRotationModeTurnsAsItIsDocumented)
{
    struct Case
    {
        int mode;
        double before;
        double after;
    };
    // The direction of the long side of a rectangle of 2 by 1 before and after.
    const Case cases[] = {
        {0, 20.0, 20.0}, {0, 200.0, 200.0},                    // as it is
        {1, 20.0, 0.0},  {1, 100.0, 180.0}, {1, 200.0, 180.0}, // longest side along U
        {2, 20.0, 90.0}, {2, 200.0, 270.0}, {2, 300.0, 270.0}, // longest side along V
        {3, 20.0, 0.0},  {3, 50.0, 90.0},   {3, 140.0, 180.0}, // least box, lesser turn
        {4, 20.0, 0.0},  {4, 80.0, 0.0},    {4, 100.0, 180.0}, // least box along U
        {5, 20.0, 90.0}, {5, 179.0, 90.0},  {5, 190.0, 270.0}, // least box along V
    };
    for (const Case& c : cases) {
        PackKeys keys = inPlace();
        keys.rotationMode = c.mode;
        const Layout layout({placed(rectangle(2.0, 1.0), {5.0, 5.0}, c.before)});
        const double after = directionOf(Packed(layout, keys).uvs);
        EXPECT_NEAR(std::remainder(after - c.after, 360.0), 0.0, 1e-9)
            << "mode " << c.mode << " from " << c.before;
    }
}

TEST(PackModes, OnlyTheAllowedTurnsAreTaken)
{
    struct Case
    {
        double min, max, step;
        std::vector<double> allowed;
    };
    const Case cases[] = {
        {0, 360, 0, {0}},
        {0, 360, 90, {0, 90, 180, 270}},
        {0, 90, 45, {0, 45, 90}},
        {30, 30, 10, {30}},
        {90, 10, 40, {10, 50, 90}},
        {-45, 45, 90, {315, 45}},
        {0, 360, 180, {0, 180}},
        {0, 360, 1000, {0}},
        {0, 720, 120, {0, 120, 240}},
        {10, 20, -5, {10, 15, 20}},
    };
    for (const Case& c : cases) {
        PackKeys keys;
        keys.rotateMin = c.min;
        keys.rotateMax = c.max;
        keys.rotateStep = c.step;
        // Long and thin, in a tall box and a wide one: many turns are tempting.
        for (const Box2& box : {Box2{{0, 0}, {1, 3}}, Box2{{0, 0}, {3, 1}}}) {
            keys.box = box;
            const Layout layout({rectangle(5.0, 1.0), rectangle(1.0, 2.0)});
            const double after = directionOf(Packed(layout, keys).uvs);
            EXPECT_TRUE(std::any_of(
                c.allowed.begin(), c.allowed.end(),
                [&](double a) { return std::abs(std::remainder(after - a, 360.0)) < 1e-9; }))
                << after << " of " << c.min << " to " << c.max << " by " << c.step;
        }
    }
}

TEST(PackModes, IslandScalingKeepsItsRatios)
{
    Layout layout;
    for (int i = 0; i < 6; ++i)
        layout.add(placed(star(4 + i, 0.5), {1.0 * i, 0.0}, 0.0, {0.1 * (i + 1), 0.1 * (i + 1)}),
                   1.0 + 0.5 * i);
    for (const int layoutScaling : {1, 2, 3})
        for (const int scaling : {0, 1, 3}) {
            PackKeys keys;
            keys.islandScaling = scaling;
            keys.layoutScaling = layoutScaling;
            keys.spacing = 0.003;
            const Packed packed(layout, keys);
            const auto ratio = [&](int i) {
                return packed.area(i) /
                       (scaling == 1 ? packed.areaInSpace(i) : packed.areaBefore(i));
            };
            for (int i = 1; i < layout.patchCount; ++i)
                EXPECT_NEAR(ratio(i) / ratio(0), 1.0, 1e-9) << "scaling " << scaling;
        }
}

TEST(PackModes, IslandsKeepTheirSizeWhereTheLayoutIsNotScaled)
{
    Layout layout;
    layout.add(rectangle(0.2, 0.1), 2.0);
    layout.add(rectangle(0.1, 0.1), 3.0);
    const double inUV = 0.02 + 0.01;
    const double inSpace = 4.0 * 0.02 + 9.0 * 0.01;
    for (const int layoutScaling : {0, 1}) {
        PackKeys keys;
        keys.layoutScaling = layoutScaling;
        keys.islandScaling = 0;
        EXPECT_NEAR(Packed(layout, keys).area(0), 0.02, 1e-12);
        keys.islandScaling = 1;
        EXPECT_NEAR(Packed(layout, keys).area(0), 4.0 * 0.02, 1e-12);
        EXPECT_NEAR(Packed(layout, keys).area(1), 9.0 * 0.01, 1e-12);
        keys.islandScaling = 3;
        EXPECT_NEAR(Packed(layout, keys).area(0), 0.02 * inSpace / inUV, 1e-12);
    }
}

TEST(PackModes, WhatDoesNotFitAtItsSizeIsShrunkOrRefused)
{
    const Layout layout({rectangle(3.0, 3.0), rectangle(2.0, 1.0)});
    PackKeys keys;
    keys.layoutScaling = 1;
    const Packed shrunk(layout, keys);
    EXPECT_NE(shrunk.warning.find("smaller"), std::string::npos);
    EXPECT_NEAR(shrunk.area(0) / shrunk.area(1), 4.5, 1e-9);
    EXPECT_GT(std::max(bounds(shrunk.uvs).width(), bounds(shrunk.uvs).height()), 0.9);

    keys.layoutScaling = 0;
    PackRun run(layout);
    run.pack(keys);
    EXPECT_NE(run.error().find("fit"), std::string::npos) << run.error();
    EXPECT_EQ(run.exportUVs(), layout.uvs);
}

TEST(PackModes, StretchingReachesAllSidesAndKeepsGapsAndRatios)
{
    const Layout layout({rectangle(3.0, 1.0), rectangle(1.0, 0.7), placed(star(5, 0.3), {}, 10.0)});
    PackKeys keys;
    keys.layoutScaling = 3;
    keys.margin = 0.01;
    keys.spacing = 0.02;
    keys.box = {{0, 0}, {1, 2.5}};
    const Packed packed(layout, keys);
    const Box2 box = bounds(packed.uvs);
    EXPECT_LT(length(box.low - Vec2{0.01, 0.01}), 1e-5);
    EXPECT_LT(length(box.high - Vec2{0.99, 2.49}), 1e-5);
    EXPECT_GE(packed::leastGap(layout, packed.uvs), 0.02);
    EXPECT_NEAR(packed.area(0) / packed.area(1), 3.0 / 0.7, 1e-9);
}

TEST(PackModes, WithoutTranslationIslandsStayAroundTheirMiddle)
{
    const Layout layout = randomLayout(6, 11);
    PackKeys keys = inPlace();
    keys.rotationMode = 5;
    keys.islandScaling = 1;
    keys.margin = 0.1;
    keys.layoutScaling = 2;
    const Packed packed(layout, keys);
    for (int i = 0; i < layout.patchCount; ++i) {
        EXPECT_NEAR(packed.area(i) / packed.areaInSpace(i), 1.0, 1e-9);
        const Vec2 before = boundsOfPatch(layout, layout.uvs, i).centre();
        EXPECT_TRUE(boundsOfPatch(layout, packed.uvs, i).contains(Box2{before, before}));
    }
    EXPECT_TRUE(packed::areSimilar(layout, layout.uvs, packed.uvs, 1e-9));

    const Packed untouched(layout, inPlace());
    for (std::size_t v = 0; v < layout.uvs.size(); ++v)
        EXPECT_LT(length(untouched.uvs[v] - layout.uvs[v]), 1e-12);
}

/// The tile that a patch lies in, and that it keeps the margin there.
int tileOf(const Layout& layout, const std::vector<Vec2>& uvs, int patch, const PackKeys& keys)
{
    const Box2 box = boundsOfPatch(layout, packed::asFloats(uvs), patch);
    const double width = keys.box.width();
    const double height = keys.box.height();
    const int u = static_cast<int>(std::floor((box.centre().x - keys.box.low.x) / width));
    const int v = static_cast<int>(std::floor((box.centre().y - keys.box.low.y) / height));
    const Vec2 low = keys.box.low + Vec2{u * width + keys.margin, v * height + keys.margin};
    const Vec2 high = low + Vec2{width - 2.0 * keys.margin, height - 2.0 * keys.margin};
    EXPECT_TRUE((Box2{low, high}).contains(box));
    EXPECT_TRUE(u >= 0 && u < keys.tilesU && v >= 0 && v < keys.tilesV);
    return u + v * keys.tilesU;
}

TEST(PackTiles, DistributedIslandsUseAllTilesAtOneScale)
{
    const Layout layout(std::vector<Patch>(6, rectangle(1.0, 1.0)));
    PackKeys keys;
    keys.tilesU = 3;
    keys.tilesV = 2;
    keys.margin = 0.05;
    keys.box = {{1, 1}, {2, 2}};
    const std::vector<Vec2> uvs = packSoundly(layout, keys);
    std::set<int> used;
    for (int i = 0; i < 6; ++i) {
        used.insert(tileOf(layout, uvs, i, keys));
        EXPECT_NEAR(packed::areaInUV(layout, uvs, i), 0.81, 1e-4);
    }
    EXPECT_EQ(used.size(), 6U);
}

TEST(PackTiles, ManyIslandsFillTheTilesEvenlyAndToTheShareThatIsTold)
{
    const Layout layout = randomLayout(60, 3);
    PackKeys keys;
    keys.tilesU = 3;
    PackRun run(layout);
    run.pack(keys);
    ASSERT_FALSE(run.hasError()) << run.error();
    const std::vector<Vec2> uvs = run.exportUVs();
    double inTile[3] = {};
    for (int i = 0; i < layout.patchCount; ++i)
        inTile[tileOf(layout, uvs, i, keys)] += packed::areaInUV(layout, uvs, i);
    const double mean = packed::wholeArea(layout, uvs) / 3.0;
    for (const double area : inTile)
        EXPECT_NEAR(area, mean, 0.1 * mean);
}

TEST(PackModes, TellsWhatIsCoveredAndABoundThatHolds)
{
    // Two halves of the square fill it to the gap, and the bound says no more than that.
    const Layout layout({rectangle(1.0, 0.5), rectangle(1.0, 0.5)});
    PackKeys keys;
    keys.spacing = 0.02;
    PackRun run(layout);
    run.pack(keys);
    const auto told = [&](const char* key) {
        const NU3D::CRef value = run.last()->GetRef(key);
        return value ? *value->as<double>() : -1.0;
    };
    const double covered = told("#Pack.Covered double");
    const double most = told("#Pack.MostCovered double");
    EXPECT_NEAR(covered, packed::wholeArea(layout, run.exportUVs()), 1e-9);
    EXPECT_NEAR(covered, 0.98 * 0.98, 1e-3);
    EXPECT_GE(most, covered);
    EXPECT_LT(most, 0.985);
}

TEST(PackTiles, IslandsStayInTheTileOfTheirMiddleOrGoToTheNearest)
{
    Layout layout;
    layout.add(placed(rectangle(0.2, 0.2), {0.3, 0.3}));  // tile 0
    layout.add(placed(star(5, 0.5), {1.5, 0.5}));         // tile 1, reaches over its sides
    layout.add(placed(rectangle(0.2, 0.2), {-7.0, 1.4})); // left of tile 2
    layout.add(placed(rectangle(0.2, 0.2), {1.1, 9.0}));  // above tile 3
    layout.add(placed(rectangle(0.1, 0.3), {1.2, 0.1}));  // tile 1
    PackKeys keys;
    keys.tilesU = 2;
    keys.tilesV = 2;
    keys.margin = 0.01;
    keys.spacing = 0.01;
    for (const char* word : {"BBoxCenter", "Specified"}) {
        keys.tileAssignMode = word;
        const std::vector<Vec2> uvs = packSoundly(layout, keys);
        const int expected[] = {0, 1, 2, 3, 1};
        for (int i = 0; i < layout.patchCount; ++i)
            EXPECT_EQ(tileOf(layout, uvs, i, keys), expected[i]) << "island " << i;
        EXPECT_NEAR(packed::areaInUV(layout, uvs, 0) / packed::areaInUV(layout, uvs, 2), 1.0, 1e-9);
    }
}

TEST(PackTiles, ManyEmptyTilesCostNothing)
{
    const Layout layout({rectangle(1.0, 1.0)});
    PackKeys keys;
    keys.tilesU = 1000;
    keys.tilesV = 1000;
    EXPECT_EQ(tileOf(layout, packSoundly(layout, keys), 0, keys), 0);
}

TEST(PackSelection, OnlySelectedIslandsMoveAndTheOthersAreInTheWay)
{
    Layout layout;
    layout.add(placed(rectangle(0.5, 1.0), {0.0, 0.0})); // stays, covers the left half
    layout.add(placed(rectangle(0.5, 0.2), {0.5, 0.8})); // stays, at the top
    layout.add(placed(star(5, 0.4), {0.2, 0.3}));        // lies over the first
    layout.add(placed(rectangle(0.3, 0.2), {4.0, 4.0}));
    layout.add(placed(rectangle(9.0, 9.0), {7.0, 7.0})); // stays, far away
    PackKeys keys;
    keys.spacing = 0.01;
    keys.margin = 0.005;
    PackRun run(layout);
    run.packSelected(keys, {2, 3});
    ASSERT_FALSE(run.hasError()) << run.error();
    const std::vector<Vec2> uvs = run.exportUVs();
    for (std::size_t v = 0; v < uvs.size(); ++v)
        if (layout.patchOfVertex[v] != 2 && layout.patchOfVertex[v] != 3) {
            EXPECT_EQ(uvs[v], layout.uvs[v]);
        }
    for (const int patch : {2, 3}) {
        const Box2 box = boundsOfPatch(layout, packed::asFloats(uvs), patch);
        EXPECT_TRUE((Box2{{0.5 + 0.01, 0.005}, {1.0 - 0.005, 0.8 - 0.01}}).contains(box));
    }
    EXPECT_GT(packed::areaInUV(layout, uvs, 2) + packed::areaInUV(layout, uvs, 3), 0.08);
    EXPECT_TRUE(packed::areSimilar(layout, layout.uvs, uvs, 1e-9));
}

TEST(PackSelection, AHoleOfAStandingIslandHasRoom)
{
    const Layout layout({frame(0.9), placed(rectangle(2.0, 2.0), {5.0, 5.0})});
    PackKeys keys;
    keys.spacing = 0.02;
    PackRun run(layout);
    run.packSelected(keys, {1});
    ASSERT_FALSE(run.hasError()) << run.error();
    const std::vector<Vec2> uvs = packed::asFloats(run.exportUVs());
    EXPECT_GE(packed::leastGap(layout, uvs), 0.02);
    EXPECT_NEAR(boundsOfPatch(layout, uvs, 1).width(), 0.9 - 2 * 0.02, 0.02);
}

TEST(PackSelection, ABoxThatIsFullIsAnError)
{
    const Layout layout({rectangle(1.0, 1.0), placed(rectangle(1.0, 1.0), {5.0, 5.0})});
    PackRun run(layout);
    run.packSelected({}, {1});
    EXPECT_NE(run.error().find("room"), std::string::npos) << run.error();
    EXPECT_EQ(run.exportUVs(), layout.uvs);
}

} // namespace
