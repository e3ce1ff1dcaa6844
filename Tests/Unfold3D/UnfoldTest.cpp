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
    EXPECT_FALSE(session.hasWarning()) << session.warning();
    const std::vector<Vec2> uv = session.exportFloats();
    ASSERT_EQ(uv.size(), mesh.positions.size());
    for (const Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto a = static_cast<std::size_t>(t[i]);
            const auto b = static_cast<std::size_t>(t[(i + 1) % 3]);
            EXPECT_NEAR(length(uv[b] - uv[a]), length(mesh.positions[b] - mesh.positions[a]), 1e-3);
        }
}

TEST(Unfold, AClosedIslandKeepsItsUVsAndSaysWhatToDo)
{
    SolverSession session(surfaces::tetrahedron());
    const std::vector<Vec2> before = session.exportDoubles();
    session.unfold();
    ASSERT_TRUE(session.hasError());
    EXPECT_NE(session.error().find("Cut a seam"), std::string::npos) << session.error();
    EXPECT_EQ(session.exportDoubles(), before);
}

} // namespace
