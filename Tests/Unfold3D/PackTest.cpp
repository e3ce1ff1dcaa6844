#include "PackChecks.h"
#include "PackRun.h"
#include "Patchwork.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

using namespace patchwork;
using packed::bounds;
using unfold3d::Box2;

namespace
{

std::vector<Vec2> packedUVs(const Layout& layout, const PackKeys& keys)
{
    PackRun run(layout);
    run.pack(keys);
    EXPECT_FALSE(run.hasError()) << run.error();
    return run.uvs();
}

/// What every layout must hold: within the box by the margin, gaps as asked, nothing mirrored or
/// bent.
void expectSoundLayout(const Layout& layout, const PackKeys& keys, const std::vector<Vec2>& uvs)
{
    const std::vector<Vec2> rounded = packed::asFloats(uvs);
    EXPECT_GE(packed::leastGap(layout, rounded), keys.spacing);
    EXPECT_GT(packed::leastGap(layout, rounded), 0.0);
    const Box2 box = bounds(rounded);
    EXPECT_GE(box.low.x - keys.box.low.x, keys.margin);
    EXPECT_GE(box.low.y - keys.box.low.y, keys.margin);
    EXPECT_GE(keys.box.low.x + keys.tilesU * keys.box.width() - box.high.x, keys.margin);
    EXPECT_GE(keys.box.low.y + keys.tilesV * keys.box.height() - box.high.y, keys.margin);
    if (keys.layoutScaling != 3) {
        EXPECT_TRUE(packed::areSimilar(layout, layout.uvs, uvs, 1e-6));
    }
}

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
    const Layout layout = randomLayout(*rc::gen::inRange(1, 12), *rc::gen::arbitrary<unsigned>());
    expectSoundLayout(layout, keys, packedUVs(layout, keys));
    RC_ASSERT(!::testing::Test::HasFailure());
}

} // namespace
