// `cut` and `sew`: seams go where they were asked for, stand in the file that is written, and
// nothing else in it has changed.

#include "uvtool/ObjTopology.h"
#include "uvtool/SameButUVs.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"
#include "scene/SceneState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::AllOf;
using testing::HasSubstr;

/// The unit cube.
const std::string bareCube =
    "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nv 0 0 1\nv 1 0 1\nv 0 1 1\nv 1 1 1\n"
    "f 1 3 4 2\nf 5 6 8 7\nf 1 2 6 5\nf 3 7 8 4\nf 1 5 7 3\nf 2 4 8 6\n";
/// The same seen at a slant in UV, which makes it one closed island.
const std::string cube =
    bareCube.substr(0, bareCube.find('f')) +
    "vt 0 0\nvt .5 0\nvt 0 .5\nvt .5 .5\nvt .15 .25\nvt .65 .25\nvt .15 .75\nvt .65 .75\n"
    "f 1/1 3/3 4/4 2/2\nf 5/5 6/6 8/8 7/7\nf 1/1 2/2 6/6 5/5\n"
    "f 3/3 7/7 8/8 4/4\nf 1/1 5/5 7/7 3/3\nf 2/2 4/4 8/8 6/6\n";
/// With a normal for each face, so that faces share no vertex.
const std::string hardCube =
    cube.substr(0, cube.find('f')) +
    "vn 0 0 -1\nvn 0 0 1\nvn 0 -1 0\nvn 0 1 0\nvn -1 0 0\nvn 1 0 0\n"
    "f 1/1/1 3/3/1 4/4/1 2/2/1\nf 5/5/2 6/6/2 8/8/2 7/7/2\nf 1/1/3 2/2/3 6/6/3 5/5/3\n"
    "f 3/3/4 7/7/4 8/8/4 4/4/4\nf 1/1/5 5/5/5 7/7/5 3/3/5\nf 2/2/6 4/4/6 8/8/6 6/6/6\n";

/// Two squares that stand upright to each other, objects of their own that meet in position and UV.
const char* const bentSheet = "o floor\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                              "vt 0 0\nvt .5 0\nvt .5 .5\nvt 0 .5\nf 1/1 2/2 3/3 4/4\n"
                              "o wall\nv 1 0 0\nv 1 0 1\nv 1 1 1\nv 1 1 0\n"
                              "vt .5 0\nvt .9 .1\nvt .9 .5\nvt .5 .5\nf 5/5 6/6 7/7 8/8\n";

/// Runs a command on a text and gives the report of the one geometry, or of the shell.
nlohmann::json runOn(const TempFolder& folder, const std::string& command, const std::string& in,
                     const std::string& out, std::vector<std::string> options)
{
    options.insert(options.begin(),
                   {command, folder / in, "-o", folder / out, "--json", "--undo-check"});
    const ToolRun run = runTool(options);
    EXPECT_EQ(run.status, Done) << run.err;
    return run.json()["geometries"][0];
}

/// What `islands` finds in a file that was written.
nlohmann::json islandsIn(const std::filesystem::path& file, bool isShell)
{
    std::vector<std::string> arguments{"islands", file, "--json"};
    if (isShell)
        arguments.emplace_back("--shell");
    return runTool(arguments).json()["geometries"][0];
}

/// The largest step of a UV between two files, at their corners.
float largestStep(const std::filesystem::path& file, const std::filesystem::path& original)
{
    const Document after = readDocument(file);
    const Document before = readDocument(original);
    float largest = 0;
    for (std::size_t c = 0; c < before.geometries[0].uvs[0].ofCorner.size(); ++c)
        for (std::size_t k = 0; k < 2; ++k)
            largest = std::max(largest, std::abs(after.geometries[0].uvs[0].at(c)[k] -
                                                 before.geometries[0].uvs[0].at(c)[k]));
    return largest;
}

TEST(Seams, OfACubeOpenAtItsEdgesAndCloseAgain)
{
    struct Case
    {
        const char* name;
        const std::string& obj;
        const char* extension;
    };
    const Case cases[] = {{"smooth", cube, "obj"},
                          {"hard edges", hardCube, "obj"},
                          {"without UVs", bareCube, "obj"},
                          {"hard edges as glTF", hardCube, "glb"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TempFolder folder;
        const std::string cut = std::string("cut.") + c.extension;
        const std::string sewn = std::string("sewn.") + c.extension;
        folder.write("in.obj", c.obj);
        const std::string in = std::string("in.") + c.extension;
        writeDocument(readDocument(folder / "in.obj"), folder / in);

        const nlohmann::json opened = runOn(folder, "cut", in, cut, {"--angle", "45"});
        EXPECT_EQ(opened["islands"], 1);
        EXPECT_EQ(opened["borderEdges"], 0);
        EXPECT_EQ(opened["edges"]["used"], 12);
        EXPECT_EQ(opened["edges"]["unchanged"], 0);
        EXPECT_EQ(opened["after"]["newVertices"], 16);
        EXPECT_EQ(opened["splitPolygons"], 0);
        EXPECT_EQ(opened["undoChecked"], true);
        const nlohmann::json found = islandsIn(folder / cut, false);
        EXPECT_EQ(found["islands"], 6);
        EXPECT_EQ(found["borderEdges"], 24);
        expectSameButUVs(folder / cut, folder / in);
        EXPECT_LT(largestStep(folder / cut, folder / in), 1.3e-5F);

        const nlohmann::json closed = runOn(folder, "sew", cut, sewn, {"--all"});
        EXPECT_EQ(closed["edges"]["used"], 12);
        EXPECT_EQ(closed["after"]["islands"], 1);
        EXPECT_EQ(islandsIn(folder / sewn, false)["borderEdges"], 0);
        EXPECT_EQ(islandsIn(folder / sewn, false)["compactVertices"], 8);
        expectSameButUVs(folder / sewn, folder / in);
        EXPECT_LT(largestStep(folder / sewn, folder / in), 1.3e-5F);
    }
}

TEST(Seams, OfAShellRunBetweenItsSurfaces)
{
    const TempFolder folder;
    folder.write("in.obj", bentSheet);
    EXPECT_EQ(runOn(folder, "cut", "in.obj", "cut.obj", {"--shell", "--angle", "89"})["islands"],
              1);
    EXPECT_EQ(islandsIn(folder / "cut.obj", true)["islands"], 2);
    const nlohmann::json sewn = runOn(folder, "sew", "cut.obj", "sewn.obj", {"--shell"});
    EXPECT_EQ(sewn["after"]["newVertices"], -2);
    EXPECT_EQ(islandsIn(folder / "sewn.obj", true)["islands"], 1);
    expectSameButUVs(folder / "sewn.obj", folder / "in.obj");
    // At exactly its angle an edge is not cut.
    const ToolRun none =
        runTool({"cut", folder / "in.obj", "-o", folder / "none.obj", "--shell", "--angle", "90"});
    EXPECT_EQ(none.status, Failed);
    EXPECT_THAT(none.err, HasSubstr("no edge is sharper"));
    EXPECT_FALSE(std::filesystem::exists(folder / "none.obj"));
}

TEST(Seams, GoWhereTheSurfaceBends)
{
    // A bent sheet of two triangles over one edge, by the third corner of the second one.
    const auto bent = [](const std::string& v4, const std::string& vt4, const std::string& rest) {
        return "v 0 0 0\nv 0 1 0\nv -1 0 0\nv " + v4 + "\nv 0 0 1\nvt 0 0\nvt 0 1\nvt -1 0\nvt " +
               vt4 + "\nvt .5 .5\n" + rest;
    };
    const char* const pair = "f 1/1 2/2 3/3\nf 2/2 1/1 4/4\n";
    struct Case
    {
        const char* name;
        std::string obj;
        int used;
        int islands;
    };
    const Case cases[] = {
        {"flat", bent("1 0 0", "1 0", pair), 0, 1},
        {"bent", bent("1 0 1", "1 0", pair), 1, 2},
        {"folded over in UV", bent("1 0 1", "-1 0", pair), 1, 2},
        {"flat but wound against each other",
         bent("1 0 0", "1 0", "f 1/1 2/2 3/3\nf 1/1 2/2 4/4\n"), 0, 1},
        {"a third sheet", bent("1 0 0", "1 0", std::string(pair) + "f 1/1 2/2 5/5\n"), 1, 3},
        {"a triangle without an area", bent("0 .5 0", "1 0", pair), 0, 1},
        {"within a polygon", bent("1 0 1", "1 0", "f 1/1 4/4 2/2 3/3\n"), 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TempFolder folder;
        const ToolRun run = runTool({"cut", folder.write("in.obj", c.obj), "-o", folder / "cut.obj",
                                     "--angle", "30", "--undo-check", "--json"});
        ASSERT_EQ(run.status, c.used == 0 ? Failed : Done) << run.err;
        const nlohmann::json cut = run.json()["geometries"][0];
        EXPECT_EQ(cut["edges"]["used"], c.used);
        EXPECT_EQ(c.used == 0 ? cut["islands"] : islandsIn(folder / "cut.obj", false)["islands"],
                  c.islands);
    }
}

/// The face z = 0 of the cube: vertices 0 1 2 3 at its corners 1 3 4 2.
TEST(Seams, AreNamedByTheVerticesOfAFile)
{
    struct Case
    {
        const char* name;
        const char* edges;
        int used;
        int notInMesh;
        int islands;
        int splitPolygons;
    };
    const Case cases[] = {
        {"around a face, twice, no edges between", "0 1 # x\n2 1\n\n 2\t3 \r\n3 0\n0 3\n1 1\n2 4",
         4, 2, 2, 0},
        {"through the face", "0 1\n1 2\n0 2", 3, 0, 2, 1},
        {"one edge opens nothing", "0 1", 1, 0, 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TempFolder folder;
        folder.write("in.obj", cube);
        const std::string edges = folder.write("edges", c.edges);
        const nlohmann::json cut = runOn(folder, "cut", "in.obj", "cut.obj", {"--edges", edges});
        EXPECT_EQ(cut["edges"]["used"], c.used);
        EXPECT_EQ(cut["edges"]["notInMesh"], c.notInMesh);
        EXPECT_EQ(cut["splitPolygons"], c.splitPolygons);
        EXPECT_EQ(islandsIn(folder / "cut.obj", false)["islands"], c.islands);
        EXPECT_EQ(cut["after"]["islands"], c.islands);
    }
}

TEST(Seams, AreSewnOnlyWhereTheyWereAskedFor)
{
    const TempFolder folder;
    folder.write("in.obj", cube);
    runOn(folder, "cut", "in.obj", "cut.obj", {"--angle", "45"});
    const nlohmann::json list =
        runTool({"islands", folder / "cut.obj", "--list", "--json"}).json()["geometries"][0];
    const std::string first = list["islandList"][0]["seed"].dump();
    const std::string third = list["islandList"][2]["seed"].dump();
    // The first edge of the first face.
    const std::string edges = folder.write("edges", "0 1\n");
    // Around a corner, cut along one edge more than it takes to part the faces there.
    folder.write("slit", "0 1\n1 2\n");
    runOn(folder, "cut", "in.obj", "slit.obj", {"--edges", folder / "slit"});

    folder.write("apart.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                              "vt 0 0\nvt 1 0\nvt 1 1\nvt 2 0\nvt 2 1\nvt 1 2\n"
                              "f 1/1 2/2 3/3\nf 1/4 3/5 4/6\n");

    struct Case
    {
        const char* name;
        const char* in;
        std::vector<std::string> options;
        int islands; ///< 0 when there is nothing to sew
    };
    const Case cases[] = {
        {"one edge", "cut.obj", {"--edges", edges}, 5},
        {"two islands", "cut.obj", {"--selected-by-seeds", first + "," + third}, 5},
        {"one island, no seam in it", "cut.obj", {"--selected-by-seeds", first}, 0},
        {"UVs that nearly agree", "cut.obj", {"--match-uvs"}, 1},
        {"UVs far apart", "apart.obj", {}, 1},
        {"UVs that don't agree", "apart.obj", {"--match-uvs"}, 2},
        {"a seam within an island", "slit.obj", {}, 1},
        {"not within an island", "slit.obj", {"--other-island-only"}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> arguments{"sew", folder / c.in, "-o", folder / "sewn.obj",
                                           "--undo-check"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.status, c.islands == 0 ? Failed : Done) << run.err;
        if (c.islands != 0) {
            EXPECT_EQ(islandsIn(folder / "sewn.obj", false)["islands"], c.islands) << run.err;
        }
    }
}

TEST(Seams, AreSewnInNumbersTooWhereAnEndHadOneValueBefore)
{
    // Two triangles that touch in the UV of vertex 1, by two numbers.
    const TempFolder folder;
    const auto in = folder.write("in.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv -1 0 0\n"
                                           "vt .5 .5\nvt .50 .5\nvt 1 0\nvt 0 1\nvt 0 1.5\n"
                                           "vt .1 0\nf 1/1 2/3 3/4\nf 1/2 3/5 4/6\n");
    ASSERT_EQ(runTool({"sew", in, "-o", folder / "out.obj"}).status, Done);
    const std::vector<ObjTopology::Face> faces =
        ObjTopology(bytesOf(folder / "out.obj")).objects[0];
    EXPECT_EQ(faces[0][0], faces[1][0]);
    EXPECT_EQ(faces[0][2], faces[1][1]);
}

TEST(Seams, FilesOfEdgesThatCannotBeReadAreNamedWithTheirLine)
{
    const TempFolder folder;
    const std::string in = folder.write("in.obj", cube);
    struct Case
    {
        const char* text;
        const char* says;
    };
    const Case cases[] = {{"0 1\n2\n", "edges.txt: line 2: one vertex only"},
                          {"0 1 2", "line 1: \"2\" behind two vertices"},
                          {"\n# ids\n0 -1", "line 3: \"-1\" is no vertex id"},
                          {"7 8", "there is no vertex 8; ids go from 0 to 7"},
                          {"0 99999999999", "there is no vertex 99999999999"},
                          {"\1\2\3 1", "line 1: \"???\" is no vertex id"}};
    for (const Case& c : cases)
        expectTold({"sew", in, "--edges", folder.write("edges.txt", c.text)}, folder / "out.obj",
                   Unreadable, c.says);
}

TEST(Seams, UndoIsFoundFaultyWhereStatesDiffer)
{
    const SceneState state{{{{0, 1, 2}, {{0, 0, 0}}, {{0, 0}}}}, {0, 1}, {2}, {{0, 0}}};
    EXPECT_EQ(differenceOf(state, state), "");
    const std::pair<std::string, std::function<void(SceneState&)>> changes[] = {
        {"the indices of surface 0",
         [](SceneState& s) {
             s.surfaces[0].indices = {0, 2, 1};
         }},
        {"the positions of surface 0",
         [](SceneState& s) { s.surfaces[0].positions[0][2] = 1e-6F; }},
        {"the UVs of surface 0", [](SceneState& s) { s.surfaces[0].uvs.clear(); }},
        {"the selections", [](SceneState& s) { s.selectedSeeds.clear(); }},
        {"the UVs of the compact mesh", [](SceneState& s) { s.compactUVs[0][1] = 1e-9F; }},
    };
    for (const auto& [difference, change] : changes) {
        SceneState other = state;
        change(other);
        EXPECT_EQ(differenceOf(state, other), difference);
    }
}

} // namespace
