#include "SolverSession.h"
#include "Surfaces.h"

#include <gtest/gtest.h>

using namespace unfold3d;

namespace
{

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
