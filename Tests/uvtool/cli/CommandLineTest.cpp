#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;
using testing::IsEmpty;

/// Two squares side by side in space as objects of their own; the first has UVs, the second is
/// folded over in them.
const char* const twoObjects = "o first\n"
                               "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                               "vt 0 0\nvt .5 0\nvt .5 .5\nvt 0 .5\n"
                               "f 1/1 2/2 3/3 4/4\n"
                               "o second\n"
                               "v 2 0 0\nv 3 0 0\nv 3 1 0\nv 2 1 0\n"
                               "vt .6 .6\nvt .9 .6\nvt .9 .9\nvt .8 .61\n"
                               "f 5/5 6/6 7/7\nf 5/5 7/7 8/8\n";

TEST(CommandLine, WrongUsageIsOneLineThatSaysWhy)
{
    const TempFolder folder;
    const std::string in = folder.write("in.obj", twoObjects);
    const std::string out = folder / "out.obj";
    struct Case
    {
        std::vector<std::string> arguments;
        const char* says;
    };
    const Case cases[] = {
        {{}, "subcommand"},
        {{"flatten", in}, "flatten"},
        {{"info"}, "INPUT"},
        {{"info", in, "--slot", "8"}, "--slot"},
        {{"info", in, "--slot", "-1"}, "--slot"},
        {{"info", in, "--geometry", "2"}, "geometries 0 to 1"},
        {{"info", in, "--shell", "--geometry", "1"}, "geometry 0 only"},
        {{"islands", in, "-o", out}, "-o"},
        {{"info", in, "--picture", "layout.jpg"}, ".png or .svg"},
        {{"info", in, "--quiet", "--verbose"}, "--verbose"},
        {{"unfold", in}, "--output"},
        {{"unfold", in, "-o", "out.stl"}, "out.stl"},
        {{"unfold", in, "-o", out, "--slot", "1"}, "slot 1: a file"},
        {{"unfold", in, "-o", out, "--room", "-1"}, "\"-1\" is no number from 0 up"},
        {{"pack", in, "-o", out, "--resolution", "0"}, "--resolution"},
        {{"pack", in, "-o", out, "--gap", "600"}, "--resolution"},
        {{"pack", in, "-o", out, "--gap", "nan"}, "\"nan\" is no number from 0 to 16384"},
        {{"pack", in, "-o", out, "--geometry", "-1"}, "\"-1\" is no whole number from 0 up"},
        {{"pack", in, "-o", out, "--atlas", "both"}, "{each,shared}"},
        {{"pack", in, "-o", out, "--tiles", "2x"}, "2x"},
        {{"pack", in, "-o", out, "--tiles", "1x1001"}, "1x1001"},
        {{"pack", in, "-o", out, "--box", "0", "0", "1", "0"}, "--box"},
        {{"cut", in, "-o", out}, "[--angle,--edges]"},
        {{"cut", in, "-o", out, "--angle", "40", "--edges", in}, "[--angle,--edges]"},
        {{"cut", in, "-o", out, "--angle", "181"}, "\"181\" is no number from 0 to 180"},
        {{"cut", in, "-o", out, "--edges", in}, "--geometry"},
        {{"sew", in, "-o", out, "--all", "--edges", in}, "--all"},
        {{"sew", in, "-o", out, "--edges", in, "--match-uvs"}, "--match-uvs"},
        {{"sew", in, "-o", out, "--selected-by-seeds", "1,x"}, "\"x\" is no whole number"},
        {{"sew", in, "-o", out, "--selected-by-seeds", "1"}, "--geometry"},
        {{"sew", in, "-o", out, "--shell", "--selected-by-seeds", "8"}, "no vertex 8"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.arguments));
        const ToolRun run = runTool(c.arguments);
        EXPECT_EQ(run.status, WrongUsage);
        EXPECT_EQ(run.lineCount(), 1) << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.says));
        EXPECT_THAT(run.out, IsEmpty());
        EXPECT_FALSE(std::filesystem::exists(out));
    }
}

TEST(CommandLine, HelpAndVersionGoToStandardOutput)
{
    for (const char* const asked : {"--help", "--version"}) {
        const ToolRun run = runTool({asked});
        EXPECT_EQ(run.status, Done);
        EXPECT_THAT(run.err, IsEmpty());
        EXPECT_THAT(run.out, testing::Not(IsEmpty()));
    }
    EXPECT_THAT(runTool({"pack", "--help"}).out, HasSubstr("--mutations"));
}

TEST(Info, CountsWhatEachGeometryHolds)
{
    const TempFolder folder;
    const ToolRun run = runTool({"info", folder.write("in.obj", twoObjects), "--json"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_THAT(run.err, IsEmpty());

    const nlohmann::json report = run.json();
    ASSERT_EQ(report["geometries"].size(), 2U);
    const nlohmann::json& first = report["geometries"][0];
    EXPECT_EQ(first["name"], "first");
    EXPECT_EQ(first["vertices"], 4);
    EXPECT_EQ(first["polygons"], 1);
    EXPECT_EQ(first["islands"], 1);
    EXPECT_EQ(first["borderEdges"], 4);
    EXPECT_EQ(first["slots"], nlohmann::json::parse("[0]"));
    EXPECT_EQ(first["check"]["sound"], true);
    EXPECT_FLOAT_EQ(first["check"]["area"], 0.25);

    EXPECT_EQ(report["geometries"][1]["check"]["flipped"], 1);
    EXPECT_EQ(report["check"]["sound"], false);
    EXPECT_EQ(report["check"]["islands"], 2);
    EXPECT_EQ(report["check"]["first"]["flipped"][0]["geometry"], 1);

    const nlohmann::json one =
        runTool({"info", folder / "in.obj", "--json", "--geometry", "1"}).json();
    ASSERT_EQ(one["geometries"].size(), 1U);
    EXPECT_EQ(one["geometries"][0]["name"], "second");

    const ToolRun text = runTool({"info", folder / "in.obj", "--quiet"});
    EXPECT_THAT(text.err, IsEmpty());
    EXPECT_THAT(text.out, HasSubstr("second"));
    EXPECT_THAT(text.out, HasSubstr("1 flipped triangle (first: triangle 1 of geometry 1)"));
}

TEST(Info, NamesClosedIslandsAndSeparatedSheetsOfObjectsOfAnyName)
{
    const TempFolder folder;
    // A tetrahedron, and a fan of three triangles at one edge, whose name is no UTF-8.
    const std::string in = folder.write("in.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\n"
                                                  "f 1 3 2\nf 1 2 4\nf 2 3 4\nf 3 1 4\n"
                                                  "o fan \xff\xfe\n"
                                                  "v 5 0 0\nv 5 1 0\nv 6 0 0\nv 4 0 0\nv 5 0 1\n"
                                                  "f 5 6 7\nf 6 5 8\nf 5 6 9\n");
    const nlohmann::json report = runTool({"info", in, "--json"}).json();
    const nlohmann::json& closed = report["geometries"][0]["closedIslands"];
    ASSERT_EQ(closed.size(), 1U);
    EXPECT_EQ(closed[0]["triangles"], 4);
    EXPECT_EQ(report["geometries"][0]["borderEdges"], 0);
    EXPECT_EQ(report["geometries"][1]["separatedEdges"], 1);
    EXPECT_EQ(report["geometries"][1]["closedIslands"].size(), 0U);
    EXPECT_EQ(report["check"]["triangles"], 0);
}

TEST(Input, BadFilesGiveOneLineAndTheirStatus)
{
    const TempFolder folder;
    const std::string corners = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
    struct Case
    {
        const char* name;
        std::string text;
        const char* says;
    };
    const Case cases[] = {
        {"empty.obj", "", "no faces"},
        {"nan.obj", "v 0 0 nan\n" + corners + "f 1 2 3\n", "line 1"},
        {"cut.obj", corners + "f 1 2", "is the file complete?"},
        {"binary.obj", std::string("\0\1\2\3glTF\xff\nf \n", 13), "binary file"},
        {"kind.meshes", corners, "unknown kind"},
        {"text.glb", corners, "no binary glTF"},
    };
    const auto expectUnreadable = [](const std::string& path, const char* says) {
        const ToolRun run = runTool({"info", path, "--json"});
        EXPECT_EQ(run.status, Unreadable);
        EXPECT_EQ(run.lineCount(), 1) << run.err;
        EXPECT_THAT(run.err, HasSubstr(path));
        EXPECT_THAT(run.err, HasSubstr(says));
        EXPECT_THAT(run.out, IsEmpty());
    };
    for (const Case& c : cases)
        expectUnreadable(folder.write(c.name, c.text), c.says);
    expectUnreadable(folder.path(), "");
    expectUnreadable(folder / "absent.obj", "");
}

} // namespace
