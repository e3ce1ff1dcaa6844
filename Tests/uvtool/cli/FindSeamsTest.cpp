// Seams that the tool finds by itself: meshes without any, closed ones above all, through the
// command line.

#include "uvtool/ObjBuilders.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"
#include "uvtool/WrittenIslands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;

class FindSeams : public testing::Test
{
protected:
    void write(const ObjBuilder& builder) const { folder.write("in.obj", builder.text()); }
    ToolRun unfold(std::vector<std::string> options = {}) const
    {
        options.insert(options.begin(), {"unfold", in, "-o", out, "--resolution", "256", "--json"});
        return runTool(options);
    }
    /// The written file, looked at by `info` and by an own count of its islands.
    void expectSoundIslands(std::size_t faces) const
    {
        const nlohmann::json check = runTool({"info", out, "--json"}).json()["check"];
        EXPECT_EQ(check["sound"], true) << check;
        const WrittenIslands islands = writtenIslands(out);
        EXPECT_TRUE(islands.areOpen()) << testing::PrintToString(islands.eulerCharacteristics);
        EXPECT_EQ(islands.faces, faces);
        EXPECT_EQ(islands.facesWithoutUVs, 0U);
    }

    const TempFolder folder;
    const std::string in = folder / "in.obj";
    const std::string out = folder / "out.obj";
};

TEST_F(FindSeams, EveryModeOpensClosedMeshesAndLeavesTheirPolygonsWhole)
{
    struct Case
    {
        const char* name;
        ObjBuilder mesh;
        std::size_t faces;
        const char* kind; ///< that `auto` has to choose
    };
    const Case cases[] = {{"cube", ObjBuilder().cube(4), 96, "manufactured"},
                          {"sphere", ObjBuilder().cube(6, true), 216, "organic"},
                          {"torus", ObjBuilder().torus(20, 12), 240, "organic"}};
    for (const Case& c : cases) {
        write(c.mesh);
        for (const std::string mode : {"organic", "manufactured", "baking", "auto"}) {
            SCOPED_TRACE(c.name + (" " + mode));
            const ToolRun run = unfold({"--seams", mode});
            ASSERT_EQ(run.status, Done) << run.err;
            const nlohmann::json geometry = run.json()["geometries"][0];
            const bool isAuto = mode == "auto";
            EXPECT_EQ(geometry["seams"]["mode"], isAuto ? c.kind : mode);
            EXPECT_EQ(geometry["seams"]["chosen"], isAuto);
            EXPECT_GT(geometry["seams"]["length"], 0.5);
            EXPECT_EQ(geometry["seams"]["islands"], geometry["islandsDone"]);
            EXPECT_EQ(geometry["splitPolygons"], 0);
            EXPECT_TRUE(geometry["closedIslands"].empty());
            expectSoundIslands(c.faces);
        }
    }
}

TEST_F(FindSeams, SeamsOfTheUVsStayUntilAModeReplacesThem)
{
    write(ObjBuilder().cube(3));
    ASSERT_EQ(unfold({"--seams", "manufactured"}).status, Done);
    std::filesystem::rename(out, in);
    const auto islandsWith = [&](const std::vector<std::string>& options) {
        const ToolRun run = unfold(options);
        EXPECT_EQ(run.status, Done) << run.err;
        expectSoundIslands(54);
        return writtenIslands(out).eulerCharacteristics.size();
    };
    const std::size_t islands = writtenIslands(in).eulerCharacteristics.size();
    EXPECT_EQ(islandsWith({}), islands);
    EXPECT_EQ(islandsWith({"--seams", "none"}), islands);
    EXPECT_EQ(islandsWith({"--seams", "organic"}), 1U);
    EXPECT_EQ(unfold({"--seams", "none"}).json()["geometries"][0].contains("seams"), false);

    // Without UVs, seams are found unless they are refused.
    write(ObjBuilder().cube(3));
    EXPECT_THAT(unfold({"--seams", "none"}).err, HasSubstr("closed"));
    EXPECT_EQ(unfold().json()["geometries"][0]["seams"]["chosen"], true);
}

TEST_F(FindSeams, AShellIsOneSurfaceAcrossItsGeometries)
{
    write(ObjBuilder().cubeOfPatches(3));
    const auto islandsIn = [](const std::string& file) {
        return runTool({"islands", file, "--shell", "--json"}).json()["geometries"][0]["islands"];
    };
    const ToolRun run = unfold({"--shell", "--seams", "organic"});
    ASSERT_EQ(run.status, Done) << run.err;
    const nlohmann::json shell = run.json()["geometries"];
    ASSERT_EQ(shell.size(), 1U);
    EXPECT_EQ(shell[0]["surfaces"], 6);
    EXPECT_EQ(shell[0]["vertices"], 96);
    EXPECT_EQ(shell[0]["triangles"], 108);
    EXPECT_EQ(shell[0]["islandsDone"], 1);
    EXPECT_EQ(islandsIn(out), 1);
    // Along a tree of seams a disk has a vertex more for each of them but one; surfaces that go on
    // in each other have their UVs in common.
    const std::string text = bytesOf(out);
    std::size_t lines = 0;
    for (std::size_t at = text.find("vt "); at != std::string::npos; at = text.find("vt ", at + 1))
        ++lines;
    EXPECT_EQ(lines, 56 + shell[0]["seams"]["edges"].get<std::size_t>() - 1);

    // Packed as a shell the island stays one, by themselves its parts are six.
    const std::string packed = folder / "packed.obj";
    ASSERT_EQ(runTool({"pack", out, "-o", packed, "--shell"}).status, Done);
    EXPECT_EQ(islandsIn(packed), 1);
    ASSERT_EQ(runTool({"pack", out, "-o", packed}).status, Done);
    EXPECT_EQ(islandsIn(packed), 6);
}

TEST_F(FindSeams, ProposedEdgesCutTheMeshAsTheCommandItselfDoes)
{
    const std::string edges = folder / "edges.txt";
    const std::string cut = folder / "cut.obj";
    const auto islandsIn = [](const std::string& file) {
        nlohmann::json found =
            runTool({"islands", file, "--shell", "--json"}).json()["geometries"][0];
        return std::pair(found["islands"], found["borderEdges"]);
    };
    for (const ObjBuilder& mesh : {ObjBuilder().cubeOfPatches(3), ObjBuilder().torus(16, 9)})
        for (const char* const mode : {"organic", "manufactured"}) {
            SCOPED_TRACE(mode);
            write(mesh);
            const ToolRun found = runTool(
                {"seams", in, "--shell", "--mode", mode, "--edges", edges, "-o", out, "--json"});
            ASSERT_EQ(found.status, Done) << found.err;
            const nlohmann::json report = found.json()["geometries"][0];
            const nlohmann::json& seams = report["seams"];
            const std::string text = bytesOf(edges);
            EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), seams["edges"]);
            EXPECT_EQ(report["after"]["islands"], seams["islands"]);
            EXPECT_EQ(islandsIn(out).first, seams["islands"]);

            ASSERT_EQ(runTool({"cut", in, "--shell", "--edges", edges, "-o", cut}).status, Done);
            EXPECT_EQ(islandsIn(cut), islandsIn(out));
            ASSERT_EQ(runTool({"unfold", cut, "--shell", "-o", out}).status, Done);
            EXPECT_EQ(islandsIn(out), islandsIn(cut));

            // A proposal alone changes nothing.
            const ToolRun told = runTool({"seams", in, "--shell", "--mode", mode});
            EXPECT_EQ(told.status, Done) << told.err;
            EXPECT_THAT(told.out, HasSubstr(mode));
        }
}

TEST_F(FindSeams, OptionsThatDontFitTheModeAreRefused)
{
    write(ObjBuilder().cube(2));
    struct Case
    {
        const char* mode;
        std::vector<std::string> option;
        int status;
    };
    const Case cases[] = {{"organic", {"--seam-amount", "0.5", "--pipes"}, Done},
                          {"organic", {"--seam-angle", "40"}, WrongUsage},
                          {"manufactured", {"--seam-angle", "40", "--min-patch-area", "0"}, Done},
                          {"manufactured", {"--pipes"}, WrongUsage},
                          {"baking", {"--seam-angle", "4", "--min-patch-polygons", "9"}, Done},
                          {"baking", {"--min-patch-area", "0.1"}, WrongUsage},
                          {"auto", {"--pipes", "--seam-angle", "40"}, Done},
                          {"auto", {"--min-patch-polygons", "9"}, WrongUsage},
                          {"none", {"--seam-amount", "1"}, WrongUsage},
                          {"organic", {"--seam-amount", "nan"}, WrongUsage}};
    for (const Case& c : cases) {
        std::vector<std::string> options{"--seams", c.mode};
        options.insert(options.end(), c.option.begin(), c.option.end());
        const ToolRun run = unfold(options);
        EXPECT_EQ(run.status, c.status) << c.mode << " " << c.option[0] << run.err;
    }
}

} // namespace
