// `transform`, `worldsize` and `lattice`: UVs go where the numbers of the user put them, and
// nothing else in the file has changed.

#include "uvtool/ObjBuilders.h"
#include "uvtool/ProjectedFile.h"
#include "uvtool/SameButUVs.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

/// Two islands: squares of sides 0.5 and 2, that size in space and in UV.
const std::string squares = ObjBuilder().object("squares").square(0, 0.5).square(5, 2).text();

class Edit : public testing::Test
{
protected:
    /// The tool's report on writing out.EXT from in.EXT; a failed run is told.
    nlohmann::json run(std::vector<std::string> arguments, const std::string& extension)
    {
        in = folder / ("in." + extension);
        out = folder / ("out." + extension);
        writeDocument(readDocument(folder.write("start.obj", squares)), in);
        arguments.insert(arguments.begin() + 1, in);
        arguments.insert(arguments.end(), {"-o", out, "--json"});
        const ToolRun result = runTool(arguments);
        EXPECT_EQ(result.status, Done) << result.err;
        expectSameButUVs(out, in);
        return result.json()["geometries"][0];
    }
    /// Expects that the UVs of the triangles from `first` on were taken to their images, and that
    /// those before them are where they were.
    void expectImages(const std::function<Vec2f(Vec2f)>& imageOf, std::size_t first = 0) const
    {
        const std::vector<MappedTriangle> before = mappedTriangles(in);
        const std::vector<MappedTriangle> after = mappedTriangles(out);
        ASSERT_EQ(after.size(), 4U);
        for (std::size_t t = 0; t < after.size(); ++t)
            for (std::size_t k = 0; k < 3; ++k) {
                const Vec2f uv = before[t].uvs[k];
                const Vec2f image = t < first ? uv : imageOf(uv);
                EXPECT_NEAR(after[t].uvs[k][0], image[0], t < first ? 0.0 : 1e-5) << t;
                EXPECT_NEAR(after[t].uvs[k][1], image[1], t < first ? 0.0 : 1e-5) << t;
            }
    }

    const TempFolder folder;
    std::filesystem::path in;
    std::filesystem::path out;
};

TEST_F(Edit, TransformsScaleThenTurnThenMove)
{
    for (const std::string extension : {"obj", "glb"}) {
        SCOPED_TRACE(extension);
        const nlohmann::json all =
            run({"transform", "--move", "-.5,3", "--rotate", "-270", "--scale", "2,-1"}, extension);
        expectImages([](Vec2f uv) { // about 1, 1
            return Vec2f{1 + (uv[1] - 1) - 0.5F, 1 + 2 * (uv[0] - 1) + 3};
        });
        EXPECT_EQ(all["before"]["bounds"], nlohmann::json({0, 0, 2, 2}));
        EXPECT_EQ(all["after"]["bounds"], nlohmann::json({-0.5, 2, 1.5, 6}));
        EXPECT_NEAR(all["after"]["texelDensity"], std::sqrt(2.0), 1e-6);
        EXPECT_EQ(all["islandsDone"], 2);
        EXPECT_EQ(all["check"]["mirroredIslands"], 2);
        EXPECT_EQ(all["check"]["flipped"], 0);

        const nlohmann::json one = run(
            {"transform", "--islands", "4", "--rotate", "0.001", "--about", "0,100"}, extension);
        constexpr float angle = 1.745329e-5F;
        expectImages(
            [](Vec2f uv) {
                return Vec2f{uv[0] + angle * (100 - uv[1]), uv[1] + angle * uv[0]};
            },
            2);
        EXPECT_EQ(one["islandsDone"], 1);
    }
}

TEST_F(Edit, WorldSizeGivesEachIslandTheAreaOfItsSurface)
{
    // Six squares, whose UVs are alike, under a node that makes rectangles of three shapes of them.
    Document cube = readDocument(folder.write("start.obj", ObjBuilder().cubeOfPatches(2).text()));
    for (DocumentGeometry& geometry : cube.geometries)
        geometry.toWorld = {3, 0, 0, 0, 0, 0.25, 0, 0, 0, 0, 7, 0, 1, 2, 3, 1};
    writeDocument(cube, folder / "cube.glb");
    const std::string uneven = folder / "uneven.glb";
    const std::string mapped = folder / "mapped.glb";
    ASSERT_EQ(
        runTool({"project", "triplanar", folder / "cube.glb", "-o", mapped, "--shell"}).status,
        Done);
    ASSERT_EQ(runTool({"transform", mapped, "-o", uneven, "--scale", "3,5"}).status, Done);
    const std::vector<std::string> ways[] = {{}, {"--shell"}, {"--shell", "--islands", "0,9"}};
    for (const std::vector<std::string>& how : ways) {
        std::vector<std::string> arguments{"worldsize", uneven, "--width", "4",
                                           "--height",  "0.25", "-o",      folder / "out.glb"};
        arguments.insert(arguments.end(), how.begin(), how.end());
        const ToolRun run = runTool(arguments);
        ASSERT_EQ(run.status, Done) << run.err;
        std::size_t scaled = 0;
        for (const MappedTriangle& triangle : mappedTriangles(folder / "out.glb")) {
            const auto& [a, b, c] = triangle.uvs;
            const double uvArea = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
            scaled += std::abs(std::abs(uvArea) / length(triangle.normal()) - 1.0) < 1e-4 ? 1U : 0U;
        }
        EXPECT_EQ(scaled, how.size() > 1 ? 16U : 48U);
    }
}

TEST_F(Edit, LatticeGoesThroughItsCornersAndStartsFromSavedPoints)
{
    const std::string points = folder / "points";
    const std::string start = folder.write("start.obj", squares);
    ASSERT_EQ(runTool({"lattice", start, "--grid", "3x2", "--save-points", points}).status, Done);
    EXPECT_EQ(bytesOf(points), "0 0\n1 0\n2 0\n0 2\n1 2\n2 2\n");
    for (const std::string extension : {"obj", "glb"}) {
        run({"lattice", "--grid", "3x2", "--points", points}, extension);
        expectImages([](Vec2f uv) { return uv; });
        // The last point of two by two goes up by 4: s * r of that at s, r.
        const std::string bent = folder.write("bent", "0 0 # low\n2 0\n\n0 2\n2 6\n");
        run({"lattice", "--grid", "2x2", "--points", bent, "--amount", "0.5"}, extension);
        expectImages([](Vec2f uv) { return Vec2f{uv[0], uv[1] + uv[0] * uv[1] / 2}; });
    }
}

TEST_F(Edit, SaysWhatCannotBeDone)
{
    const std::string start = folder.write("start.obj", squares);
    const std::string bare = folder.write("bare.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const std::string few = folder.write("few", "0 0\n1 0\n0 1\n");
    const std::string odd = folder.write("odd", "0 0\n1 nan\n0 1\n1 1\n");
    struct Case
    {
        std::vector<std::string> arguments;
        int status;
        const char* says;
    };
    const Case cases[] = {
        {{"transform", start}, WrongUsage, "--scale"},
        {{"transform", start, "--scale", "1e-60"}, WrongUsage, "a factor can't be 0"},
        {{"transform", start, "--move", "inf,0"}, WrongUsage, "is no pair of numbers"},
        {{"transform", start, "--move", "1,0", "--islands", "8"}, WrongUsage, "no vertex 8"},
        {{"transform", bare, "--move", "1,0"}, Failed, "no UVs in slot 0"},
        {{"transform", start, "--scale", "3e38", "--about", "-9,0"}, Unsound, "finite"},
        {{"worldsize", start, "--width", "1", "--height", "0"}, WrongUsage, "no length above 0"},
        {{"lattice", start, "--grid", "2x25", "--points", few}, WrongUsage, "from 2 to 24"},
        {{"lattice", start, "--grid", "2x2"}, WrongUsage, "--save-points"},
        {{"lattice", start, "--grid", "2x2", "--points", few}, Unreadable, "holds 3 points"},
        {{"lattice", start, "--grid", "2x2", "--points", odd}, Unreadable, "line 2: \"nan\""},
    };
    for (const Case& c : cases)
        expectTold(c.arguments, folder / "out.obj", c.status, c.says);
}

} // namespace
