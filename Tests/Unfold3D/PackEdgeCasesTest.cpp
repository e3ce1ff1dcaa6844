#include "PackChecks.h"
#include "PackRun.h"
#include "Patchwork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

using namespace patchwork;

namespace
{

TEST(PackEdgeCases, IslandsWithoutAreaGetAPlaceOfTheirOwn)
{
    struct Case
    {
        const char* name;
        std::vector<Patch> patches;
    };
    const Case cases[] = {
        {"a point", {point()}},
        {"points", {point(), point(), point()}},
        {"a line", {line(3.0)}},
        {"lines", {line(1.0), placed(line(2.0), {}, 30.0), placed(line(0.5), {}, 100.0)}},
        {"all kinds",
         {point(), line(1.0), rectangle(1.0, 0.5), placed(line(1.0), {}, 45.0), point(),
          foldedStrip(), frame(0.5)}},
    };
    for (const Case& c : cases)
        for (const int scaling : {0, 1, 3}) {
            SCOPED_TRACE(c.name);
            PackKeys keys;
            keys.islandScaling = scaling;
            keys.rotationMode = 4;
            keys.spacing = 0.01;
            keys.margin = 0.02;
            packSoundly(Layout(c.patches), keys);
        }
}

TEST(PackEdgeCases, ADrawnOutIslandDoesNotPushTheOthersAside)
{
    Layout layout({rectangle(1.0, 1.0), rectangle(1.0, 1e-7)});
    // Both are squares in space.
    for (std::size_t v = 4; v < 8; ++v)
        layout.mesh.positions[v].y *= 1e7;
    PackKeys keys;
    keys.islandScaling = 1;
    EXPECT_GT(packed::areaInUV(layout, packSoundly(layout, keys), 0), 0.005);
}

TEST(PackEdgeCases, VerticesOfBadTrianglesMoveAlongAndLooseOnesStay)
{
    Layout layout({rectangle(1.0, 1.0), rectangle(0.5, 0.5), {{{1.5, 0.0}, {9.0, 9.0}}, {}}});
    // Vertex 8 hangs on the first island by a triangle with a repeated corner, vertex 9 is loose.
    layout.mesh.triangles.push_back({1, 8, 8});
    layout.patchOfTriangle.push_back(0);
    PackKeys keys;
    keys.spacing = 0.01;
    keys.rotateStep = 0.0;
    PackRun run(layout);
    run.pack(keys);
    ASSERT_FALSE(run.hasError()) << run.error();
    const std::vector<Vec2> uvs = packed::asFloats(run.exportUVs());
    EXPECT_EQ(uvs[9], (Vec2{9.0, 9.0}));
    EXPECT_GE(packed::leastGap(layout, uvs), 0.01);
    EXPECT_EQ(uvs[8], uvs[1]);
}

TEST(PackEdgeCases, AnEmptySelectionIsAWarning)
{
    const Layout layout({rectangle(1.0, 1.0)});
    PackRun run(layout);
    run.packSelected({}, {});
    EXPECT_FALSE(run.hasError());
    EXPECT_FALSE(run.warning().empty());
    EXPECT_EQ(run.exportUVs(), layout.uvs);
}

TEST(PackEdgeCases, WhatCannotBeIsRefusedWithItsReason)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case
    {
        const char* name;
        std::function<void(PackKeys&)> change;
        const char* reason;
    };
    const Case cases[] = {
        {"a box without area", [](PackKeys& k) { k.box.high.y = 0.0; }, "box"},
        {"a box turned over", [](PackKeys& k) { k.box.high.x = -1.0; }, "box"},
        {"a box of NaN", [&](PackKeys& k) { k.box.high.x = nan; }, "box"},
        {"an endless box", [](PackKeys& k) { k.box.high.x = HUGE_VAL; }, "box"},
        {"too much margin", [](PackKeys& k) { k.margin = 0.5; }, "margin"},
        {"a negative margin", [](PackKeys& k) { k.margin = -0.1; }, "negative"},
        {"a negative spacing", [](PackKeys& k) { k.spacing = -0.1; }, "negative"},
        {"too much spacing", [](PackKeys& k) { k.spacing = 2.0; }, "room"},
        {"a spacing of NaN", [&](PackKeys& k) { k.spacing = nan; }, "#SpacingSize"},
        {"no tiles", [](PackKeys& k) { k.tilesU = 0; }, "tiles"},
        {"too many tiles", [](PackKeys& k) { k.tilesV = 1'000'000; }, "tiles"},
        {"unknown rotation", [](PackKeys& k) { k.rotationMode = 6; }, "rotation mode 6"},
        {"unknown scaling", [](PackKeys& k) { k.islandScaling = 2; }, "scaling mode 2"},
        {"unknown layout scaling", [](PackKeys& k) { k.layoutScaling = 4; }, "scaling mode 4"},
        {"unknown tile word", [](PackKeys& k) { k.tileAssignMode = "Anywhere"; }, "Anywhere"},
    };
    const Layout layout = randomLayout(4, 1);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PackKeys keys;
        c.change(keys);
        PackRun run(layout);
        run.pack(keys);
        EXPECT_NE(run.error().find(c.reason), std::string::npos) << run.error();
        EXPECT_EQ(run.exportUVs(), layout.uvs);
    }
}

TEST(PackEdgeCases, ManyIslandsWithMuchSpacingStillFindTheirPlace)
{
    Layout layout;
    for (int i = 0; i < 100; ++i)
        layout.add(rectangle(1.0 + i % 3, 1.0));
    PackKeys keys;
    keys.spacing = 0.07; // a lattice of 100 points has 0.1 between them
    packSoundly(layout, keys);
}

TEST(PackEdgeCases, ResolutionsAndTurnsOfAnySizeAreTaken)
{
    const Layout layout = randomLayout(3, 2);
    constexpr int largest = std::numeric_limits<int>::max();
    for (const auto& [resolution, step] : {std::pair{-5, 1e-300}, {0, 0.01}, {largest, 1e300}}) {
        PackKeys keys;
        keys.resolution = resolution;
        keys.rotateStep = step;
        keys.rotateMax = step > 1.0 ? 1e308 : 360.0;
        packSoundly(layout, keys);
    }
}

} // namespace
