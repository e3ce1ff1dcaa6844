#include "LayoutChecks.h"
#include "Surfaces.h"

#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/start/BorderLoops.h"
#include "Unfold3D/start/FlatStart.h"
#include "Unfold3D/start/GridDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace unfold3d;

namespace
{

TEST(FlatStart, EveryStartOfWhatHasABorderIsFlipFreeAndDoesNotCrossItself)
{
    for (const surfaces::Named& c : surfaces::openSurfaces()) {
        SCOPED_TRACE(c.name);
        const IslandMesh mesh = surfaces::normalised(c.mesh);
        const RunControl control;
        FlatStartFinder finder(mesh, control);
        EXPECT_EQ(finder.obstacle(), Obstacle::None);
        int count = 0;
        while (const std::optional<FlatStart> start = finder.next()) {
            SCOPED_TRACE(nameOf(start->method));
            ++count;
            ASSERT_EQ(start->uv.size(), mesh.positions.size());
            EXPECT_EQ(layout::countFlips(mesh.triangles, start->uv), 0);
            EXPECT_EQ(layout::countCrossings(mesh.triangles, start->uv), 0);
        }
        EXPECT_GE(count, 1);
    }
}

TEST(FlatStart, AFlatIslandIsTakenAsItLies)
{
    for (const IslandMesh& mesh : {surfaces::sheet(6, 5), surfaces::spiral(4, 30)}) {
        const RunControl control;
        const FlatStart start = flatStart(mesh, control);
        EXPECT_EQ(start.method, FlatStart::Projected);
        EXPECT_NEAR(start.distortion, 4.0, 1e-9);
    }
}

TEST(FlatStart, TellsWhatHasNoPlaceInThePlane)
{
    IslandMesh closedWithFlap = surfaces::tetrahedron();
    closedWithFlap.positions.push_back({5.0, 5.0, 5.0});
    closedWithFlap.positions.push_back({6.0, 5.0, 5.0});
    closedWithFlap.triangles.push_back({3, 4, 5});

    IslandMesh twoFansOnADisk = surfaces::sheet(2, 2);
    twoFansOnADisk.positions.push_back({1.0, 1.0, 2.0});
    twoFansOnADisk.positions.push_back({2.0, 1.0, 2.0});
    twoFansOnADisk.triangles.push_back({4, 9, 10}); // 4 lies inside the sheet

    // The strip touches a vertex of the lower and one of the upper border of the tube.
    IslandMesh joinedBorders = surfaces::tube(6, 2, 1.0, 1.0);
    for (const double z : {0.5, 1.0, 1.5})
        joinedBorders.positions.push_back({3.0, 0.0, z});
    for (const Triangle& t : {Triangle{0, 18, 19}, {18, 20, 19}, {19, 20, 12}})
        joinedBorders.triangles.push_back(t);

    struct Case
    {
        const char* name;
        IslandMesh mesh;
        Obstacle obstacle;
    };
    const Case cases[] = {
        {"closed", surfaces::tetrahedron(), Obstacle::Closed},
        {"closed, with a flap at a vertex", closedWithFlap, Obstacle::Closed},
        {"a closed torus", surfaces::torus(8, 6, 0), Obstacle::Closed},
        {"a torus with a hole", surfaces::torus(8, 6, 1), Obstacle::Handle},
        {"a fan on an inner vertex", twoFansOnADisk, Obstacle::TouchesItself},
        {"a strip between the borders of a tube", joinedBorders, Obstacle::TouchesItself},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const RunControl control;
        FlatStartFinder finder(c.mesh, control);
        EXPECT_EQ(finder.obstacle(), c.obstacle);
        EXPECT_FALSE(finder.next());
    }
}

TEST(FlatStart, PartsThatTouchInSeveralVerticesFindTheirPlace)
{
    // A sheet with a large hole, in which a smaller sheet hangs on the hole's four corners;
    // numbered so that at each corner the two fans can only lie one way round.
    IslandMesh mesh = surfaces::sheetWithHoles(
        5, 5, [](int i, int j) { return i >= 1 && i <= 3 && j >= 1 && j <= 3; });
    const auto vertexAt = [&](double x, double y) {
        for (int v = 0; v < mesh.vertexCount(); ++v)
            if (mesh.positions[static_cast<std::size_t>(v)] == Vec3{x, y, 0.0})
                return v;
        return -1;
    };
    const int corner[4] = {vertexAt(1, 1), vertexAt(4, 1), vertexAt(4, 4), vertexAt(1, 4)};
    const int middle = mesh.vertexCount();
    mesh.positions.push_back({2.5, 2.5, 0.0});
    for (int i = 0; i < 4; ++i)
        mesh.triangles.push_back({corner[i], corner[(i + 1) % 4], middle});

    const RunControl control;
    FlatStartFinder finder(mesh, control);
    ASSERT_EQ(finder.obstacle(), Obstacle::None);
    while (const std::optional<FlatStart> start = finder.next()) {
        EXPECT_EQ(layout::countFlips(mesh.triangles, start->uv), 0);
        EXPECT_EQ(layout::countCrossings(mesh.triangles, start->uv), 0);
    }
}

FilledDisk diskOf(const IslandMesh& mesh)
{
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    return fillToDisk(mesh, findBorderLoops(mesh, edges).loops);
}

TEST(GridDrawing, DrawsAnyDiskOnWholeNumbersWithoutFlips)
{
    for (const surfaces::Named& c : surfaces::openSurfaces()) {
        SCOPED_TRACE(c.name);
        const FilledDisk disk = diskOf(c.mesh);
        const std::vector<Vec2> uv = drawOnGrid(disk);
        ASSERT_EQ(static_cast<int>(uv.size()), disk.vertexCount);
        EXPECT_EQ(layout::countFlips(disk.triangles, uv), 0);
        EXPECT_EQ(layout::countCrossings(c.mesh.triangles, uv), 0);
        for (const Vec2 p : uv) {
            EXPECT_EQ(p.x, std::round(p.x));
            EXPECT_EQ(p.y, std::round(p.y));
            EXPECT_GE(std::min(p.x, p.y), 0.0);
            EXPECT_LE(p.x + p.y, 2.0 * disk.vertexCount);
        }
    }
}

} // namespace
