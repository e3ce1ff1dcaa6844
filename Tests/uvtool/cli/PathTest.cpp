// Paths along edges, from vertex ids to a file of edges that cut takes.

#include "uvtool/ObjBuilders.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;

class FindPath : public testing::Test
{
protected:
    ToolRun path(std::vector<std::string> options) const
    {
        options.insert(options.begin(), {"path", in});
        return runTool(options);
    }
    void write(const ObjBuilder& builder) const { folder.write("in.obj", builder.text()); }

    const TempFolder folder;
    const std::string in = folder / "in.obj";
    const std::string edges = folder / "edges.txt";
};

TEST_F(FindPath, GivesCutTheEdgesThatItOpens)
{
    struct Case
    {
        const char* name;
        ObjBuilder mesh;
        std::vector<std::string> options;
    };
    const Case cases[] = {
        {"from the border through two more", ObjBuilder().dome(8), {"--vertices", "0,20,60"}},
        {"straight on", ObjBuilder().dome(8), {"--edge", "20,21", "--stop-at-borders"}},
        {"from side to side", ObjBuilder().cubeOfPatches(4), {"--vertices", "6,137", "--shell"}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        write(c.mesh);
        std::vector<std::string> options = c.options;
        const ToolRun printed = path(options);
        ASSERT_EQ(printed.status, Done) << printed.err;
        options.insert(options.end(), {"-o", edges, "--json", "--picture", folder / "layout.svg"});
        const nlohmann::json found = path(options).json()["geometries"][0]["path"];
        EXPECT_EQ(bytesOf(edges), printed.out);
        std::string pairs;
        for (const auto& pair : found["pairs"])
            pairs += pair[0].dump() + " " + pair[1].dump() + "\n";
        EXPECT_EQ(pairs, printed.out);
        EXPECT_GT(found["edges"], 2);

        std::vector<std::string> cut{"cut",     in,    "-o",    folder / "cut.obj",
                                     "--edges", edges, "--json"};
        if (c.options.back() == "--shell")
            cut.emplace_back("--shell");
        const nlohmann::json geometry = runTool(cut).json()["geometries"][0];
        EXPECT_EQ(geometry["edges"]["used"], found["edges"]);
        EXPECT_EQ(geometry["after"]["borderEdges"].get<int>(),
                  geometry["borderEdges"].get<int>() + 2 * found["edges"].get<int>());
    }
}

/// Squares 1 and 2 wide, with UVs, so that the layout can be drawn.
TEST_F(FindPath, MeasuresInTheSceneAndIsPointedOut)
{
    write(ObjBuilder().square(0, 1).object("second").square(4, 2));
    const std::string picture = folder / "layout.svg";
    const auto lengthOf = [&](std::vector<std::string> options) {
        options.insert(options.end(), {"--geometry", "1", "--json", "--picture", picture});
        return path(options).json()["geometries"][0]["path"]["length"].get<double>();
    };
    EXPECT_NEAR(lengthOf({"--vertices", "0,2"}), 2 * std::sqrt(2.0), 1e-6);
    EXPECT_THAT(bytesOf(picture), HasSubstr("#e82c0c"));
    EXPECT_NEAR(lengthOf({"--vertices", "0,2", "--along-borders"}), 4.0, 1e-6);
    runTool({"info", in, "--picture", picture});
    EXPECT_THAT(bytesOf(picture), testing::Not(HasSubstr("#e82c0c")));
}

TEST_F(FindPath, TellsWhyThereIsNone)
{
    write(ObjBuilder().dome(8).object("second").dome(8, 2));
    const struct
    {
        std::vector<std::string> options;
        int status;
        const char* says;
    } cases[] = {
        {{}, WrongUsage, "[--vertices,--edge]"},
        {{"--vertices", "1"}, WrongUsage, "two vertices or more"},
        {{"--vertices", "1,1"}, WrongUsage, "vertex 1 and vertex 1 lie in one place"},
        {{"--vertices", "1,162"}, WrongUsage, "no vertex 162"},
        {{"--vertices", "20,21", "--along-borders"}, WrongUsage, "vertex 20 is on no border"},
        {{"--vertices", "0,1,100"}, Failed, "no path between vertex 1 and vertex 100"},
        {{"--vertices", "0,100", "--along-borders"}, Failed, "no border leads from vertex 0"},
        {{"--edge", "1,60"}, WrongUsage, "no triangle has an edge between"},
        {{"--edge", "20,21", "--borders-only"}, Failed, "inside of an island"}};
    for (const auto& c : cases) {
        std::vector<std::string> words{"path", in, "--shell", "--quiet"};
        words.insert(words.end(), c.options.begin(), c.options.end());
        expectTold(words, edges, c.status, c.says);
    }
    EXPECT_THAT(path({"--vertices", "0,1"}).err, HasSubstr("--geometry"));
}

} // namespace
