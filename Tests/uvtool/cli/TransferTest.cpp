// uvtool transfer: UVs of one file on the meshes of another.

#include "uvtool/ObjBuilders.h"
#include "uvtool/ProjectedFile.h"
#include "uvtool/SameButUVs.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <sstream>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class Transfer : public testing::Test
{
protected:
    ToolRun run(const std::string& source, const std::string& target, const std::string& out,
                const Words& more = {}) const
    {
        Words words{"transfer", folder / source, folder / target, "-o", folder / out, "--json"};
        words.insert(words.end(), more.begin(), more.end());
        return runTool(words);
    }

    void writeCube(const std::string& name, int n, bool hasPatches) const
    {
        const ObjBuilder cube = hasPatches ? ObjBuilder().cubeOfPatches(n) : ObjBuilder().cube(n);
        folder.write(name, cube.text());
    }

    /// With images thrown on that fit it: from six sides, and where there is a slot 1 from one.
    void writeMappedCube(const std::string& name, int n, bool hasPatches) const
    {
        writeCube("plain.obj", n, hasPatches);
        Words words{"project", "triplanar", folder / "plain.obj", "-o", folder / name, "--quiet"};
        ASSERT_EQ(runTool(words).status, Done);
        words = {"project", "planar", folder / name, "-o", folder / name, "--slot", "1"};
        if (name.ends_with(".glb")) {
            ASSERT_EQ(runTool(words).status, Done);
        }
    }

    void expectSameUVs(const std::string& name, const std::string& expected, std::size_t slot) const
    {
        const std::vector<MappedTriangle> found = mappedTriangles(folder / name, slot);
        const std::vector<MappedTriangle> wanted = mappedTriangles(folder / expected, slot);
        ASSERT_EQ(found.size(), wanted.size());
        std::size_t count = 0;
        for (std::size_t i = 0; i < 6 * found.size(); ++i)
            count += std::abs(found[i / 6].uvs[i % 3][i / 3 % 2] -
                              wanted[i / 6].uvs[i % 3][i / 3 % 2]) <= 1e-5F
                         ? 0U
                         : 1U;
        EXPECT_EQ(count, 0U) << "coordinates differ in slot " << slot;
    }

    const TempFolder folder;
};

/// On flat sides the UVs are those that the same image gives to the other tessellation, with a seam
/// at each edge of the cube.
TEST_F(Transfer, CarriesChartsOverInAnyPairingOfFilesAndPieces)
{
    struct Case
    {
        const char* source;
        const char* out;
        bool hasSourcePatches;
        bool hasTargetPatches;
        Words options;
    };
    const Case cases[] = {{"a.obj", "out.obj", false, false, {}},
                          {"a.obj", "out.glb", true, false, {"--method", "octree"}},
                          {"a.glb", "out.obj", false, true, {"--method", "normal"}},
                          {"a.glb", "out.glb", true, true, {"--slots", "1,0"}},
                          {"a.obj", "out.obj", true, true, {"--shell"}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.source) + " to " + c.out + testing::PrintToString(c.options));
        writeMappedCube(c.source, 4, c.hasSourcePatches);
        writeMappedCube("expected.glb", 6, c.hasTargetPatches);
        writeCube("target.obj", 6, c.hasTargetPatches);
        const ToolRun done = run(c.source, "target.obj", c.out, c.options);
        ASSERT_EQ(done.status, Done) << done.err;
        expectSameUVs(c.out, "expected.glb", 0);
        if (c.out == std::string("out.obj"))
            expectSameButUVs(folder / c.out, folder / "target.obj"); // quads are still quads
        const nlohmann::json report = done.json();
        EXPECT_EQ(report["geometries"][0]["splitPolygons"], 0);
        const bool hasSlots = c.options == Words{"--slots", "1,0"};
        EXPECT_EQ(report["geometries"][0]["transfers"].size(), hasSlots ? 2U : 1U);
        if (hasSlots)
            expectSameUVs(c.out, "expected.glb", 1);
    }
}

/// A tube that is cut along one line: its UV runs from 0 to 1 around it.
std::string tube(int sides, int rows, double turn, bool isMapped)
{
    std::ostringstream obj;
    for (int row = 0; row <= rows; ++row)
        for (int i = 0; i < sides; ++i) {
            const double angle = 2 * std::numbers::pi * (i + turn) / sides;
            obj << "v " << std::cos(angle) << ' ' << std::sin(angle) << ' ' << 2.0 * row / rows
                << '\n';
        }
    for (int row = 0; isMapped && row <= rows; ++row)
        for (int i = 0; i <= sides; ++i)
            obj << "vt " << double(i) / sides << ' ' << double(row) / rows << '\n';
    for (int row = 0; row < rows; ++row)
        for (int i = 0; i < sides; ++i)
            for (const auto& triangle : {std::array{0, 1, 3}, std::array{0, 3, 2}}) {
                obj << 'f';
                for (const int corner : triangle) {
                    const int above = row + corner / 2;
                    const int beside = i + corner % 2;
                    obj << ' ' << above * sides + beside % sides + 1;
                    if (isMapped)
                        obj << '/' << above * (sides + 1) + beside + 1;
                }
                obj << '\n';
            }
    return obj.str();
}

/// Seen along the tube, no triangle of the target reaches further around than one of its sides, and
/// so it must not in UV.
TEST_F(Transfer, LeavesNoTriangleAcrossASeam)
{
    folder.write("source.obj", tube(24, 6, 0, true));
    for (const char* const method : {"bvh", "octree", "normal"})
        for (const auto& [sides, turn] : {std::pair{24, 0.3}, {16, 0.0}, {61, 0.45}, {7, 0.0}}) {
            SCOPED_TRACE(std::string(method) + " to " + std::to_string(sides));
            folder.write("target.obj", tube(sides, 9, turn, false));
            const ToolRun done = run("source.obj", "target.obj", "out.obj", {"--method", method});
            ASSERT_EQ(done.status, Done) << done.err;
            EXPECT_EQ(done.json()["check"]["islands"], 1);
            EXPECT_EQ(done.json()["check"]["flipped"], 0);
            for (const MappedTriangle& triangle : mappedTriangles(folder / "out.obj"))
                for (std::size_t k = 0; k < 3; ++k) {
                    const Vec2f& uv = triangle.uvs[k];
                    EXPECT_LT(std::abs(uv[0] - triangle.uvs[(k + 1) % 3][0]), 1.2F / float(sides));
                    // A corner beyond the seam stops where the way to it does.
                    const bool isOnSeam = uv[0] < 1e-6F || uv[0] > 1 - 1e-6F;
                    EXPECT_NEAR(uv[1], triangle.positions[k][2] / 2, isOnSeam ? 0.1 : 1e-5);
                }
        }
}

/// Of two squares in the source only one has UVs, as has one in the target; then only one of the
/// source is asked for.
TEST_F(Transfer, LeavesWhatLiesOnNothingThatHasUVs)
{
    const std::string far = "v 4 0 0\nv 5 0 0\nv 5 1 0\nv 4 1 0\n";
    const auto source =
        ObjBuilder().object("near").square(0, 1).object("far").text() + far + "f -4 -3 -2 -1\n";
    folder.write("source.obj", source);
    folder.write("target.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\no second\n" + far +
                                   "vt .5 .25\nf 5 6/1 7/1\nf 5/1 7/1 8\n");
    const ToolRun done = run("source.obj", "target.obj", "out.obj");
    ASSERT_EQ(done.status, Done) << done.err;
    EXPECT_THAT(bytesOf(folder / "out.obj"), HasSubstr("vt .5 .25\nf 5 6/5 7/5\nf 5/5 7/5 8\n"));
    EXPECT_EQ(done.json()["geometries"][0]["transfers"][0]["trianglesWithoutUVs"], 0);
    EXPECT_EQ(done.json()["geometries"][1]["transfers"][0]["trianglesWithoutUVs"], 2);
    EXPECT_THAT(done.err, HasSubstr("keep what they had"));
    const ToolRun chosen = run("source.obj", "target.obj", "out.obj", {"--source-geometry", "0"});
    EXPECT_EQ(chosen.json()["geometries"][1]["transfers"][0]["trianglesWithoutUVs"], 0);
    EXPECT_THAT(chosen.err, HasSubstr("geometry 1 \"second\" lies off the source"));
}

/// Two squares lie on one another, with UVs side by side. In the target they come in another order,
/// and the one of a third name lies where it lies.
TEST_F(Transfer, PairsPiecesByNameWhereTheyLieOnOneAnother)
{
    const std::string place = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";
    const std::string face = "f -4/-4 -3/-3 -2/-2 -1/-1\n";
    folder.write("source.obj", "o left\n" + place + "vt 0 0\nvt .5 0\nvt .5 1\nvt 0 1\n" + face +
                                   "o right\n" + place + "vt .5 0\nvt 1 0\nvt 1 1\nvt .5 1\n" +
                                   face + "o off\nv 0 0 8\nv 1 0 8\nv 0 1 8\n" +
                                   "vt 0 0\nvt 0 0\nvt 0 0\nf -3/-3 -2/-2 -1/-1\n");
    std::string target;
    for (const char* const name : {"right", "left", "off"})
        target += std::string("o ") + name + "\n" + place + "f -4 -3 -2 -1\n";
    folder.write("target.obj", target);
    for (const bool isByPlace : {false, true}) {
        const ToolRun done =
            run("source.obj", "target.obj", "out.obj", isByPlace ? Words{"--by-place"} : Words{});
        ASSERT_EQ(done.status, Done) << done.err;
        std::vector<float> us;
        for (const MappedTriangle& triangle : mappedTriangles(folder / "out.obj"))
            us.push_back(triangle.uvs[0][0]);
        const float right = isByPlace ? 0.0F : 0.5F;
        EXPECT_THAT(us, testing::ElementsAre(right, right, 0, 0, 0, 0));
        const nlohmann::json report = done.json()["geometries"];
        EXPECT_EQ(report[0]["transfers"][0]["sourceGeometry"],
                  isByPlace ? nlohmann::json() : nlohmann::json(1));
        EXPECT_EQ(report[2]["transfers"][0]["sourceGeometry"], nlohmann::json());
    }
}

TEST_F(Transfer, TellsWhyThereIsNone)
{
    folder.write("mapped.obj", ObjBuilder().square(0, 1).text());
    folder.write("plain.obj", ObjBuilder().dome(2).text());
    folder.write("empty.obj", "v 0 0 0\n");
    folder.write("nan.obj", "v 0 0 nan\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const struct
    {
        const char* source;
        const char* target;
        Words options;
        int status;
        const char* says;
    } cases[] = {
        {"plain.obj", "mapped.obj", {}, Failed, "plain.obj: nothing to transfer, there are no UVs"},
        {"mapped.obj", "plain.obj", {"--slots", "0,1"}, WrongUsage, "holds 1 UV slot only"},
        {"mapped.obj", "plain.obj", {"--slots", "0", "--slot", "1"}, WrongUsage, "--slot"},
        {"mapped.obj", "plain.obj", {"--slots", "0,8"}, WrongUsage, "\"8\" is no whole number"},
        {"mapped.obj", "plain.obj", {"--method", "best"}, WrongUsage, "--method"},
        {"mapped.obj", "plain.obj", {"--source-geometry", "1"}, WrongUsage, "geometry 0 only"},
        {"empty.obj", "plain.obj", {}, Unreadable, "empty.obj: holds no faces"},
        {"mapped.obj", "nan.obj", {}, Unreadable, "nan.obj: line 1"},
        {"none.obj", "plain.obj", {}, Unreadable, "none.obj"}};
    for (const auto& c : cases) {
        Words words{"transfer", folder / c.source, folder / c.target};
        words.insert(words.end(), c.options.begin(), c.options.end());
        expectTold(words, folder / "out.obj", c.status, c.says);
    }
}

} // namespace
