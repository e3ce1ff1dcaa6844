#include "PackChecks.h"
#include "PackRun.h"
#include "Patchwork.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

using namespace patchwork;
using packed::boundsOfPatch;
using unfold3d::Box2;

namespace
{

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
