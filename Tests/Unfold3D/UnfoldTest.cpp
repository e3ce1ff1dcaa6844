#include "LayoutChecks.h"
#include "SolverSession.h"
#include "Surfaces.h"

#include <gtest/gtest.h>

using namespace unfold3d;

namespace
{

TEST(Unfold, AFlatSheetComesBackAsItIs)
{
    const IslandMesh mesh = surfaces::sheet(4, 3);
    SolverSession session(mesh);
    session.selectAllVertices();
    session.unfold();
    ASSERT_FALSE(session.hasError()) << session.error();
    EXPECT_EQ(session.warning(), "");
    const std::vector<Vec2> uv = session.exportUVs();
    ASSERT_EQ(uv.size(), mesh.positions.size());
    for (std::size_t v = 0; v < uv.size(); ++v) {
        EXPECT_NEAR(uv[v].x - uv[0].x, mesh.positions[v].x, 1e-5);
        EXPECT_NEAR(uv[v].y - uv[0].y, mesh.positions[v].y, 1e-5);
    }
}

TEST(Unfold, AClosedIslandKeepsItsUVsAndSaysWhatToDo)
{
    SolverSession session(surfaces::tetrahedron());
    const std::vector<Vec2> before = session.exportUVs();
    session.unfold();
    ASSERT_TRUE(session.hasError());
    EXPECT_NE(session.error().find("Cut a seam"), std::string::npos) << session.error();
    EXPECT_EQ(session.exportUVs(), before);
}

} // namespace
