#include "LayoutChecks.h"
#include "Surfaces.h"

#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/start/BorderLoops.h"
#include "Unfold3D/start/GridDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace unfold3d;

namespace
{

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
