#include "LayoutChecks.h"
#include "Surfaces.h"

#include "Unfold3D/start/FlatStart.h"

#include <gtest/gtest.h>

using namespace unfold3d;

namespace
{

struct OpenCase
{
    const char* name;
    IslandMesh mesh;
};

TEST(FlatStart, LaysOutWhatHasABorder)
{
    const OpenCase cases[] = {
        {"one triangle", surfaces::sheetWithHoles(1, 1, [](int, int) { return false; })},
        {"a sheet", surfaces::sheet(5, 4)},
        {"steep hills", surfaces::hills(12, 9, 3.0)},
        {"a ring", surfaces::tube(7, 3, 1.0, 0.5)},
        {"four holes",
         surfaces::sheetWithHoles(
             9, 9, [](int i, int j) { return (i == 2 || i == 6) && (j == 2 || j == 6); })},
        {"a finger", surfaces::finger(8, 10, 1.0, 1.0)},
        {"a spiral", surfaces::spiral(5, 24)},
        {"needles", surfaces::needleFan(200)},
        {"two blades", surfaces::blades(2)},
        {"seven blades", surfaces::blades(7)},
        {"holes that meet at a corner",
         surfaces::sheetWithHoles(
             4, 4, [](int i, int j) { return (i == 1 && j == 1) || (i == 2 && j == 2); })},
        {"a chessboard",
         surfaces::sheetWithHoles(6, 6, [](int i, int j) { return (i + j) % 2 == 1; })},
    };
    for (const OpenCase& c : cases) {
        SCOPED_TRACE(c.name);
        const FlatStart start = flatStart(c.mesh, RunControl());
        EXPECT_EQ(start.obstacle, Obstacle::None);
        ASSERT_EQ(start.uv.size(), c.mesh.positions.size());
        EXPECT_EQ(layout::countFlips(c.mesh.triangles, start.uv), 0);
        EXPECT_EQ(layout::countCrossings(c.mesh.triangles, start.uv), 0);
    }
}

TEST(FlatStart, TellsWhatHasNoPlaceInThePlane)
{
    struct Case
    {
        const char* name;
        IslandMesh mesh;
        Obstacle obstacle;
    };
    const Case cases[] = {
        {"closed", surfaces::tetrahedron(), Obstacle::Closed},
        {"a closed torus", surfaces::torus(8, 6, 0), Obstacle::Closed},
        {"a torus with a hole", surfaces::torus(8, 6, 1), Obstacle::Handle},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const FlatStart start = flatStart(c.mesh, RunControl());
        EXPECT_EQ(start.obstacle, c.obstacle);
        EXPECT_TRUE(start.uv.empty());
    }
}

} // namespace
