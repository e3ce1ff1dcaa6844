#include "PackChecks.h"
#include "PackRun.h"
#include "Patchwork.h"

#include "Unfold3D/packing/Pack.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <tbb/global_control.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

using namespace patchwork;
using packed::bounds;
using unfold3d::Box2;

namespace
{

RC_GTEST_PROP(Pack, IslandsKeepTheirGapsOnEveryLayout, ())
{
    PackKeys keys;
    keys.spacing = *rc::gen::element(0.0, 0.001, 0.01, 0.03);
    keys.margin = *rc::gen::element(0.0, 0.002, 0.05);
    keys.rotationMode = *rc::gen::inRange(0, 6);
    keys.rotateStep = *rc::gen::element(0.0, 90.0, 37.0);
    keys.islandScaling = *rc::gen::element(0, 1, 3);
    keys.layoutScaling = *rc::gen::inRange(1, 4);
    keys.resolution = *rc::gen::element(1, 64, 200);
    keys.box = *rc::gen::element(Box2{{0, 0}, {1, 1}}, Box2{{-3, 2}, {-1, 2.7}},
                                 Box2{{100, 100}, {100.5, 103}});
    keys.tilesU = *rc::gen::inRange(1, 3);
    const Layout layout = randomLayout(*rc::gen::inRange(1, 9), *rc::gen::arbitrary<unsigned>());
    packSoundly(layout, keys);
    RC_ASSERT(!::testing::Test::HasFailure());
}

TEST(Pack, OneIslandFillsTheBoxToTheMargin)
{
    for (const Patch& patch : {rectangle(3.0, 1.0), star(5, 0.4), frame(0.5)}) {
        PackKeys keys;
        keys.margin = 0.125;
        keys.rotateStep = 0.0;
        const Box2 box = bounds(packSoundly(Layout({patch}), keys));
        EXPECT_NEAR(std::max(box.width(), box.height()), 0.75, 1e-5);
        EXPECT_NEAR(box.low.x, 0.125, 1e-5);
        EXPECT_NEAR(box.low.y, 0.125, 1e-5);
    }
}

TEST(Pack, SmallIslandsGoIntoHolesAndBaysOfLargeOnes)
{
    PackKeys keys;
    keys.rotateStep = 0.0;
    struct Case
    {
        const char* name;
        Layout layout;
    };
    // Each could only be half as large if the outer island were taken for its box.
    const Case cases[] = {
        {"a square in a frame", Layout({frame(0.8), rectangle(0.75, 0.75)})},
        {"a frame in a frame in a frame",
         Layout({placed(frame(0.8), {}, 0.0, {0.7, 0.7}), frame(0.8),
                 placed(frame(0.8), {}, 0.0, {0.5, 0.5})})},
        {"a square in a bay", Layout({rectangle(0.6, 0.6), clamp(0.15)})},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<Vec2> uvs = packSoundly(c.layout, keys);
        const double scale = bounds(uvs).width();
        EXPECT_GT(scale, 0.97);
        // The largest island alone spans the box: nothing lies beside it.
        double widest = 0.0;
        for (int patch = 0; patch < c.layout.patchCount; ++patch)
            widest = std::max(widest, packed::boundsOfPatch(c.layout, uvs, patch).width());
        EXPECT_GT(widest, 0.97);
    }
}

TEST(Pack, RectanglesFillTheSquareWhateverTheResolution)
{
    Layout layout;
    for (int i = 0; i < 16; ++i)
        layout.add(rectangle(1.0 + 0.37 * (i % 5), 0.6 + 0.29 * (i % 7)));
    for (const int resolution : {1, 500}) {
        PackKeys keys;
        keys.resolution = resolution;
        keys.spacing = 0.002;
        EXPECT_GT(packed::wholeArea(layout, packSoundly(layout, keys)), 0.85);
    }
}

TEST(Pack, MoreMutationsNeverGiveLess)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        const Layout layout = randomLayout(9, seed);
        double before = 0.0;
        for (const int mutations : {-1, 0, 1, 2, 5}) {
            PackKeys keys;
            keys.spacing = 0.004;
            keys.mutations = mutations;
            const double area = packed::wholeArea(layout, packSoundly(layout, keys));
            EXPECT_GE(area, before * (1.0 - 1e-12)) << mutations << " mutations, seed " << seed;
            before = area;
        }
    }
}

TEST(Pack, AStopAtAnyMomentGivesTheBestSoFar)
{
    const Layout layout = randomLayout(9, 5);
    unfold3d::ImportedMesh mesh{layout.mesh.positions, layout.mesh.triangles, {}};
    mesh.parts.assign(mesh.triangles.size(), unfold3d::ImportedMesh::Sound);
    const unfold3d::Islands islands = findIslands(mesh);
    std::vector<int> all(static_cast<std::size_t>(islands.count()));
    std::iota(all.begin(), all.end(), 0);
    unfold3d::PackOptions options;
    options.spacing = 0.01;
    double before = 0.0;
    int results = 0;
    for (int checkpoint = 1; checkpoint < 5000; checkpoint *= 2) {
        unfold3d::RunControl control;
        control.stopAtCheckpoint(checkpoint);
        std::vector<Vec2> uvs = layout.uvs;
        try {
            const unfold3d::UVLayout given{mesh, islands, layout.uvs};
            for (const auto& move : packIslands(given, all, options, control).moves)
                for (const int v : islands.vertices[move.island])
                    uvs[static_cast<std::size_t>(v)] = move(uvs[static_cast<std::size_t>(v)]);
        } catch (const unfold3d::Stopped&) {
            EXPECT_LT(checkpoint, 200) << "there is a first layout soon";
            continue;
        }
        ++results;
        EXPECT_GE(packed::leastGap(layout, uvs), 0.01);
        const double area = packed::wholeArea(layout, uvs);
        EXPECT_GE(area, before * (1.0 - 1e-12));
        before = area;
    }
    EXPECT_GE(results, 4);
    PackKeys keys;
    keys.seconds = 1e-6;
    packSoundly(layout, keys);
}

TEST(Pack, TheSameBitsOnEveryRunAndForEveryNumberOfThreads)
{
    const Layout layout = randomLayout(12, 7);
    PackKeys keys;
    keys.spacing = 0.003;
    keys.mutations = 2;
    const auto packAgain = [&] {
        PackRun run(layout);
        run.pack(keys);
        return run.exportUVs();
    };
    const std::vector<Vec2> first = packAgain();
    EXPECT_EQ(packAgain(), first);
    const tbb::global_control oneThread(tbb::global_control::max_allowed_parallelism, 1);
    EXPECT_EQ(packAgain(), first);
}

TEST(Pack, TheUnitOfTheMeshDoesNotMatter)
{
    Layout layout = randomLayout(8, 4);
    PackKeys keys;
    keys.islandScaling = 1;
    keys.rotationMode = 4;
    keys.spacing = 0.002;
    const double area = packed::wholeArea(layout, packSoundly(layout, keys));
    for (const double unit : {1e-9, 1e9}) {
        Layout other = layout;
        for (Vec2& uv : other.uvs)
            uv = unit * uv + Vec2{1000.0 * unit, -500.0 * unit};
        for (unfold3d::Vec3& p : other.mesh.positions)
            p = (1.0 / unit) * p;
        EXPECT_NEAR(packed::wholeArea(other, packSoundly(other, keys)), area, 0.01 * area);
    }
}

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
