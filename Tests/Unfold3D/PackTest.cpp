#include "PackChecks.h"
#include "PackRun.h"
#include "Patchwork.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <tbb/global_control.h>

#include <algorithm>
#include <array>
#include <cmath>

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

} // namespace
