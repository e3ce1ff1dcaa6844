#include "PackRun.h"

#include "PackChecks.h"

#include <gtest/gtest.h>

void PackRun::pack(const PackKeys& keys, bool selectedOnly)
{
    const unfold3d::Box2& box = keys.box;
    run("Pack",
        {{"#ProcessIslandSelection bool", selectedOnly},
         {"#Translate bool", keys.translate},
         {"#Rotate.Min double 0.0", keys.rotateMin},
         {"#Rotate.Max double 360.0", keys.rotateMax},
         {"#Rotate.Step double 0.0", keys.rotateStep},
         {"#Rotate.Mode int 2", keys.rotationMode},
         {"#Scaling.Mode int 0", keys.islandScaling},
         {"#LayoutScalingMode int 0", keys.layoutScaling},
         {"#Resolution int", keys.resolution},
         {"#MaxMutations int 1", keys.mutations},
         {"#MaxSeconds double 0", keys.seconds},
         {"#SpacingSize double 0", keys.spacing},
         {"#MarginSize double 0", keys.margin},
         {"#Box box2d 0.0 1.0 0.0 1.0", NU3D::CBox2D(box.low.x, box.high.x, box.low.y, box.high.y)},
         {"#MultiTile.SizeU int", keys.tilesU},
         {"#MultiTile.SizeV int", keys.tilesV},
         {"#TileAssignMode string \"Specified\"", keys.tileAssignMode}});
}

void PackRun::packSelected(const PackKeys& keys, const std::vector<int>& islands)
{
    select("Island", islands);
    pack(keys, true);
}

std::vector<unfold3d::Vec2> packSoundly(const patchwork::Layout& layout, const PackKeys& keys)
{
    PackRun run(layout);
    run.pack(keys);
    EXPECT_FALSE(run.hasError()) << run.error();
    std::vector<unfold3d::Vec2> uvs = run.exportUVs();
    const std::vector<unfold3d::Vec2> rounded = packed::asFloats(uvs);
    EXPECT_GE(packed::leastGap(layout, rounded), keys.spacing);
    EXPECT_GT(packed::leastGap(layout, rounded), 0.0);
    const unfold3d::Box2 bounds = packed::bounds(rounded);
    EXPECT_GE(bounds.low.x - keys.box.low.x, keys.margin);
    EXPECT_GE(bounds.low.y - keys.box.low.y, keys.margin);
    EXPECT_GE(keys.box.low.x + keys.tilesU * keys.box.width() - bounds.high.x, keys.margin);
    EXPECT_GE(keys.box.low.y + keys.tilesV * keys.box.height() - bounds.high.y, keys.margin);
    EXPECT_TRUE(keys.layoutScaling == 3 || packed::areSimilar(layout, layout.uvs, uvs, 1e-9));
    return uvs;
}
