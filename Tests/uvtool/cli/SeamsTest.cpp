// `cut` and `sew`: seams go where they were asked for, stand in the file that is written, and
// nothing else in it has changed.

#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;
using testing::StartsWith;

enum CubeKind : std::int32_t
{
    Quads,
    QuadsWithNormals, ///< a normal for each face, so that faces share no vertex
    Triangles,
    WithoutUVs
};

/// The unit cube, seen at a slant in UV: one closed island. Position and UV 1 + x + 2 y + 4 z.
std::string cube(CubeKind kind)
{
    std::string text = "# a cube\n";
    for (int i = 0; i < 8; ++i) {
        const int x = i & 1;
        const int y = i >> 1 & 1;
        const int z = i >> 2;
        text += "v " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z) + "\n";
        if (kind != WithoutUVs)
            text += "vt " + std::to_string(0.5 * x + 0.15 * z) + " " +
                    std::to_string(0.5 * y + 0.25 * z) + "\n";
    }
    text += "vn 0 0 -1\nvn 0 0 1\nvn 0 -1 0\nvn 0 1 0\nvn -1 0 0\nvn 1 0 0\n";
    const std::array<std::array<int, 4>, 6> faces{
        {{1, 3, 4, 2}, {5, 6, 8, 7}, {1, 2, 6, 5}, {3, 7, 8, 4}, {1, 5, 7, 3}, {2, 4, 8, 6}}};
    for (std::size_t f = 0; f < faces.size(); ++f) {
        const auto corner = [&](std::size_t k) {
            const std::string id = std::to_string(faces[f][k]);
            return " " + id + (kind == WithoutUVs ? "" : "/" + id) +
                   (kind == QuadsWithNormals ? "/" + std::to_string(f + 1) : "");
        };
        if (kind == Triangles)
            text += "f" + corner(0) + corner(1) + corner(2) + "\nf" + corner(0) + corner(2) +
                    corner(3) + "\n";
        else
            text += "f" + corner(0) + corner(1) + corner(2) + corner(3) + "\n";
    }
    return text;
}

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

/// Positions and normals at the corners of a file's polygons.
void expectSameButUVs(const std::filesystem::path& file, const std::filesystem::path& original)
{
    const Document read = readDocument(file);
    const Document before = readDocument(original);
    ASSERT_EQ(read.geometries.size(), before.geometries.size());
    for (std::size_t g = 0; g < read.geometries.size(); ++g) {
        const DocumentGeometry& a = read.geometries[g];
        const DocumentGeometry& b = before.geometries[g];
        EXPECT_EQ(a.polygonOffsets, b.polygonOffsets);
        ASSERT_EQ(a.cornerCount(), b.cornerCount());
        for (std::size_t c = 0; c < a.cornerCount(); ++c) {
            EXPECT_EQ(a.positions.at(c), b.positions.at(c));
            ASSERT_EQ(a.normals.has(c), b.normals.has(c));
            if (a.normals.has(c)) {
                EXPECT_EQ(a.normals.at(c), b.normals.at(c));
            }
            if (!b.uvs[0].exists())
                continue;
            for (std::size_t k = 0; k < 2; ++k)
                EXPECT_NEAR(a.uvs[0].at(c)[k], b.uvs[0].at(c)[k], 2e-5);
        }
    }
}

TEST(Seams, OfACubeOpenAtItsEdgesAndCloseAgain)
{
    struct Case
    {
        const char* name;
        CubeKind kind;
        const char* extension;
    };
    const Case cases[] = {{"quads", Quads, "obj"},
                          {"hard edges", QuadsWithNormals, "obj"},
                          {"triangles", Triangles, "obj"},
                          {"without UVs", WithoutUVs, "obj"},
                          {"hard edges as glTF", QuadsWithNormals, "glb"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TempFolder folder;
        const std::string cut = std::string("cut.") + c.extension;
        const std::string sewn = std::string("sewn.") + c.extension;
        folder.write("in.obj", cube(c.kind));
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

        const nlohmann::json closed = runOn(folder, "sew", cut, sewn, {"--all"});
        EXPECT_EQ(closed["edges"]["used"], 12);
        EXPECT_EQ(closed["after"]["islands"], 1);
        EXPECT_EQ(islandsIn(folder / sewn, false)["borderEdges"], 0);
        EXPECT_EQ(islandsIn(folder / sewn, false)["compactVertices"], 8);
        expectSameButUVs(folder / sewn, folder / in);
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
        folder.write("in.obj", cube(Quads));
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
    folder.write("in.obj", cube(Quads));
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

TEST(Seams, FilesOfEdgesThatCannotBeReadAreNamedWithTheirLine)
{
    const TempFolder folder;
    const std::string in = folder.write("in.obj", cube(Quads));
    struct Case
    {
        const char* text;
        const char* says;
    };
    const Case cases[] = {{"0 1\n2\n", "line 2: one vertex only"},
                          {"0 1 2", "line 1: \"2\" behind two vertices"},
                          {"\n# ids\n0 -1", "line 3: \"-1\" is no vertex id"},
                          {"0 1.5", "\"1.5\" is no vertex id"},
                          {"7 8", "there is no vertex 8; ids go from 0 to 7"},
                          {"0 99999999999", "there is no vertex 99999999999"},
                          {"\1\2\3 1", "line 1: \"???\" is no vertex id"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        for (const char* const command : {"cut", "sew"}) {
            const ToolRun run = runTool({command, in, "-o", folder / "out.obj", "--edges",
                                         folder.write("edges.txt", c.text)});
            EXPECT_EQ(run.status, Unreadable);
            EXPECT_EQ(run.lineCount(), 1) << run.err;
            EXPECT_THAT(run.err, HasSubstr("edges.txt"));
            EXPECT_THAT(run.err, HasSubstr(c.says));
        }
    }
    EXPECT_EQ(runTool({"cut", in, "-o", folder / "out.obj", "--edges", folder.path()}).status,
              Unreadable);
    EXPECT_FALSE(std::filesystem::exists(folder / "out.obj"));
}

} // namespace
