#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

TEST(RepairCommand, WritesTheFileWithCopiesOfVertexLinesAndNothingElseNew)
{
    const TempFolder folder;
    const auto in =
        folder.write("in.obj", "v 0 0 0 1 0 0 # red\nv 1 0 0\nv 0 1 0\nv -1 0 0\n"
                               "v 0 -1 0\no a\nf 1 2 3\nf -5 4 5\nf 2 2 3\n"
                               "o b\nv 9 9 9\nv 8 8 8\nf 6 7 2\nl 6 -1\np 1 6\ncurv 0 1 1 6\n");
    const ToolRun run = runTool({"repair", in, "-o", folder / "out.obj", "--json", "--quiet"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_EQ(bytesOf(folder / "out.obj"),
              "v 0 0 0 1 0 0 # red\nv 1 0 0\nv 0 1 0\nv -1 0 0\nv 0 -1 0\no a\n"
              "v 1 0 0\nv 0 1 0\nv 0 0 0 1 0 0\nf 1 2 3\nf -1 4 5\nf 6 6 7\n"
              "o b\nv 9 9 9\nv 8 8 8\nf 9 10 2\nl 9 -1\np 1 9\ncurv 0 1 1 9\n");
    EXPECT_EQ(run.json()["geometries"][0]["repair"],
              nlohmann::json::parse(R"({"singularVertices": 1, "singularEdges": 0,
                                        "foldedTriangles": 1, "newVertices": 3, "rounds": 1})"));
}

TEST(RepairCommand, TakesPolygonsApartThatComeApart)
{
    const TempFolder folder;
    const auto in = folder.write("in.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 0 1\nv 0 0 2\n"
                                           "f 1 2 3 4\nf 1 3 5\nf 3 1 6\n");
    for (const char* const name : {"out.obj", "out.glb"}) {
        const ToolRun run = runTool({"repair", in, "-o", folder / name, "--json", "--quiet"});
        ASSERT_EQ(run.status, Done) << run.err;
        EXPECT_EQ(run.json()["geometries"][0]["splitPolygons"], 1);
        EXPECT_EQ(run.json()["geometries"][0]["repair"]["newVertices"], 6);
        const ToolRun again = runTool({"repair", folder / name, "-o", folder / "2.obj"});
        EXPECT_NE(again.err.find("nothing singular"), std::string::npos) << again.err;
    }
}

} // namespace
