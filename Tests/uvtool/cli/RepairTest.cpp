#include "uvtool/ObjTopology.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include <gtest/gtest.h>

#include <random>

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
              "v 0 0 0 1 0 0\nf 1 2 3\nf -1 4 5\n"
              "o b\nv 9 9 9\nv 8 8 8\nf 7 8 2\nl 7 -1\np 1 7\ncurv 0 1 1 7\n");
    EXPECT_EQ(run.json()["geometries"][0]["repair"],
              nlohmann::json::parse(R"({"degenerateTriangles": 1, "droppedPolygons": 1,
                                        "singularVertices": 1, "singularEdges": 0,
                                        "singularUVs": 0, "newVertices": 1, "newUVs": 0, "rounds": 1})"));
}

TEST(RepairCommand, TakesOutOfPolygonsWhatHasNoArea)
{
    const struct
    {
        const char* what;
        const char* face;
        const char* repaired;
    } cases[] = {{"a corner twice", "f 1/1 2/2 2/3 3/4", "f 1/1 2/2 3/3"},
                 {"equal places", "f 1 2 3 8 4", "f 1 2 3 4"},
                 {"a spike", "f 1 2 6 2 3 4", "f 1 2 3 4"},
                 {"a corner on a side", "f 1 7 2 3 4", "f 9 7 10 3 4"},
                 {"a triangle on a line", "f 1 7 2", ""},
                 {"nothing but a way and back", "f 1 2 3 2", ""},
                 {"two loops at a corner", "f 1 2 3 1 4 6", "f 1 2 3\nf 9 4 6"}};
    const TempFolder folder;
    const std::string start = "v 0 0 0\nv 2 0 0\nv 2 2 0\nv 0 2 0\nv 9 9 9\nv -3 1 0\nv 1 0 0\n"
                              "v 2 2 0\nvt 0 0\nvt 1 0\nvt 1 .1\nvt 1 1\nf 1 2 5\n";
    for (const auto& c : cases)
        for (const char* const name : {"out.obj", "out.glb"}) {
            SCOPED_TRACE(std::string(c.what) + " to " + name);
            const auto in = folder.write("in.obj", start + c.face + "\n");
            ASSERT_EQ(runTool({"repair", in, "-o", folder / name}).status, Done);
            std::string found = bytesOf(folder / "out.obj");
            found = found.substr(std::min(found.size(), found.find("f 1 2 5") + 8));
            EXPECT_EQ(found, c.repaired + std::string(*c.repaired == 0 ? "" : "\n"));
            const ToolRun again = runTool({"repair", folder / name, "-o", folder / "2.glb"});
            EXPECT_NE(again.err.find("nothing singular"), std::string::npos) << again.err;
            EXPECT_EQ(again.err.find("removed"), std::string::npos) << again.err;
        }
    const auto flat = folder.write("in.obj", "v 0 0 0\nv 1 1 1\nv 3 3 3\nf 1 2 3\n");
    const ToolRun left = runTool({"repair", flat, "-o", folder / "out.obj"});
    EXPECT_NE(left.err.find("no triangle has an area; left as it is"), std::string::npos);
    EXPECT_EQ(bytesOf(folder / "out.obj"), bytesOf(flat));
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

/// An octahedron with two charts that touch in its top, 1, and one of the other faces that
/// touches itself there.
TEST(RepairCommand, GivesChartsThatTouchInAPointUVsOfTheirOwn)
{
    const TempFolder folder;
    const std::string values = "v 0 0 1\nv 1 0 0\nv 0 1 0\nv -1 0 0\nv 0 -1 0\nv 0 0 -1\n"
                               "vt .5 0.30000000000000004 1 # top\nvt 1 0\nvt 1 1\nvt 0 1\n"
                               "vt 0 0\nvt .5 .5\nvt .5 0\n";
    const std::string others = "f 1/6 3/6 4/6\nf 1/6 5/6 2/6\nf 3/6 2/6 6/7\nf 4/6 3/6 6/7\n"
                               "f 5/6 4/6 6/7\nf 2/6 5/6 6/7\nl 1/1 2/6\n";
    const auto in = folder.write("in.obj", values + "f 1/1 2/2 3/3\nf 1/-7 4/4 5/5\n" + others);
    const ToolRun run = runTool({"repair", in, "-o", folder / "out.obj", "--json", "--quiet"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_EQ(run.json()["geometries"][0]["repair"]["newVertices"], 0);
    EXPECT_EQ(run.json()["geometries"][0]["repair"]["newUVs"], 1);
    EXPECT_EQ(bytesOf(folder / "out.obj"),
              values + "vt .5 0.30000000000000004 1\nf 1/1 2/2 3/3\nf 1/-1 4/4 5/5\n" + others);
}

/// Faces over few positions, no three on one line, and few UVs, which are all equal; some have
/// none, and some come by a position twice, but not all of them.
std::string randomFaces(std::mt19937& random)
{
    const auto upTo = [&random](int n) { return 1 + static_cast<int>(random() % unsigned(n)); };
    std::string text;
    const int count = 3 + upTo(6);
    for (int i = 0; i < count; ++i)
        text += "v " + std::to_string(i) + " " + std::to_string(i * i) + " 0\nvt 0.5 0.5\n";
    for (const char* const object : {"o a\n", "o b\n"}) {
        text += std::string(object) + "f 1 2 3\n";
        for (int f = upTo(16); f > 0; --f) {
            const bool hasUVs = upTo(5) > 1;
            text += "f";
            for (int k = 0; k < 3; ++k)
                text += " " + std::to_string(upTo(count)) +
                        (hasUVs ? "/" + std::to_string(upTo(2)) : "");
            text += "\n";
        }
    }
    return text;
}

TEST(RepairCommand, LeavesNothingSingularInAnyTanglesNumbers)
{
    const TempFolder folder;
    std::size_t found = 0;
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const std::string text = randomFaces(random);
        ASSERT_EQ(
            runTool({"repair", folder.write("in.obj", text), "-o", folder / "out.obj"}).status,
            Done);
        const ObjTopology before(text);
        const ObjTopology after(bytesOf(folder / "out.obj"));
        found += before.singularCount(true);
        EXPECT_EQ(after.singularCount(false) + after.singularCount(true), 0U);
        EXPECT_EQ(after.cornerValues(), before.cornerValues());
        const auto setOf = [](const auto& lines) { return std::set(lines.begin(), lines.end()); };
        EXPECT_EQ(setOf(after.positions), setOf(before.positions));
        ASSERT_EQ(runTool({"repair", folder / "out.obj", "-o", folder / "2.obj"}).status, Done);
        EXPECT_EQ(bytesOf(folder / "2.obj"), bytesOf(folder / "out.obj"));
    }
    EXPECT_GT(found, 100U);
}

} // namespace
