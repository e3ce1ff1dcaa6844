// `optimize` and `constrain`: layouts get better where they were asked to, and nothing else in the
// file has changed.

#include "uvtool/ObjBuilders.h"
#include "uvtool/SameButUVs.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"
#include "mesh/CornerVertices.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

constexpr int cells = 5;

/// Disorder that turns triangles over, and such that doesn't.
constexpr double tangled = 0.25;
constexpr double slight = 0.04;

/// A curved sheet of quads, in objects of `cells` by `cells` of them side by side in space. Their
/// UVs are in disorder, `disorder` off at most; those of neighbours meet, or lie apart so that each
/// is an island.
std::string sheets(int objects, double disorder, bool apart)
{
    std::string text;
    for (int object = 0; object < objects; ++object) {
        text += "o sheet" + std::to_string(object) + "\n";
        for (int row = 0; row <= cells; ++row)
            for (int i = object * cells; i <= (object + 1) * cells; ++i) {
                const double x = double(i) / cells;
                const double y = double(row) / cells;
                const double u =
                    x + disorder * std::sin(12.9 * i + 78.2 * row) + (apart ? object : 0);
                const double v = y + disorder * std::sin(39.3 * i + 11.1 * row);
                text += "v " + std::to_string(x) + " " + std::to_string(y) + " " +
                        std::to_string(0.3 * (x * (2 - x) + y * (1 - y))) + "\nvt " +
                        std::to_string(u) + " " + std::to_string(v) + "\n";
            }
        for (int row = 0; row < cells; ++row)
            for (int column = 0; column < cells; ++column) {
                const int first = (object * (cells + 1) + row) * (cells + 1) + column + 1;
                text += "f";
                for (const int corner : {first, first + 1, first + cells + 2, first + cells + 1})
                    text += " " + std::to_string(corner) + "/" + std::to_string(corner);
                text += "\n";
            }
    }
    return text;
}

/// A corner of a triangle, with the id that the command line knows it by.
struct Corner
{
    std::size_t geometry;
    unsigned int id;
    Vec3d position;
    Vec2f uv;
};

std::vector<Corner> cornersOf(const std::filesystem::path& file)
{
    const Document document = readDocument(file);
    std::vector<Corner> corners;
    std::size_t first = 0;
    for (std::size_t g = 0; g < document.geometries.size(); ++g) {
        const DocumentGeometry& geometry = document.geometries[g];
        const CornerVertices vertices = distinctCorners(geometry);
        for (std::size_t i = 0; i < geometry.triangles.size(); ++i)
            corners.push_back(
                {g, static_cast<unsigned int>(first + vertices.vertexOfCorner[i]),
                 geometry.positions.at(geometry.triangles[i]),
                 geometry.uvs[0].exists() ? geometry.uvs[0].at(geometry.triangles[i]) : Vec2f{}});
        first += vertices.vertexCount;
    }
    return corners;
}

/// The edges along a row of the sheet, or a column, as a file of edges.
std::string edgesAlong(const std::vector<Corner>& corners, std::size_t axis, double place)
{
    const auto isOn = [&](const Corner& c) { return std::abs(c.position[axis] - place) < 1e-6; };
    std::string text;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        if (isOn(corners[i]) && isOn(corners[next]))
            text += std::to_string(corners[i].id) + " " + std::to_string(corners[next].id) + "\n";
    }
    return text;
}

/// How far the UVs of a row or column lie apart across it.
float spreadAlong(const std::vector<Corner>& corners, std::size_t axis, double place)
{
    float low = 1e9F;
    float high = -1e9F;
    for (const Corner& c : corners)
        if (std::abs(c.position[axis] - place) < 1e-6) {
            low = std::min(low, c.uv[axis]);
            high = std::max(high, c.uv[axis]);
        }
    return high - low;
}

class Relax : public testing::Test
{
protected:
    ToolRun run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin() + 1, folder / in);
        arguments.insert(arguments.end(), {"-o", folder / out});
        return runTool(arguments);
    }
    /// Names the files of a case, and writes the first of them.
    void prepare(const std::string& obj, const std::string& extension)
    {
        in = "in." + extension;
        out = "out." + extension;
        writeDocument(readDocument(folder.write("start.obj", obj)), folder / in);
    }

    const TempFolder folder;
    std::string in = "in.obj";
    std::string out = "out.obj";
};

TEST_F(Relax, UntanglesGridsAndLaysLinesStraight)
{
    for (const std::string extension : {"obj", "glb"})
        for (const bool isShell : {false, true}) {
            SCOPED_TRACE(extension + (isShell ? " as a shell" : ""));
            prepare(sheets(isShell ? 2 : 1, tangled, false), extension);
            const std::vector<Corner> before = cornersOf(folder / in);
            std::vector<std::string> options{"--json"};
            if (isShell)
                options.emplace_back("--shell");
            options.insert(options.begin(), "optimize");
            const ToolRun optimized = run(options);
            ASSERT_EQ(optimized.status, Done) << optimized.err;
            const nlohmann::json report = optimized.json()["geometries"][0];
            EXPECT_GT(report["before"]["flipped"], 0);
            EXPECT_EQ(report["after"]["flipped"], 0);
            EXPECT_LT(report["after"]["energy"], 4.2);
            EXPECT_EQ(report["check"]["sound"], true);
            expectSameButUVs(folder / out, folder / in);

            options.front() = "constrain";
            options.insert(options.end(),
                           {"--horizontal", folder.write("h", edgesAlong(before, 1, 0.4)),
                            "--vertical", folder.write("v", edgesAlong(before, 0, 0.6))});
            EXPECT_GT(spreadAlong(before, 1, 0.4), 0.1F);
            const ToolRun constrained = run(options);
            ASSERT_EQ(constrained.status, Done) << constrained.err;
            const nlohmann::json lines = constrained.json()["geometries"][0]["lines"];
            EXPECT_EQ(lines["horizontalEdges"], isShell ? 2 * cells : cells);
            EXPECT_EQ(lines["lines"], 2);
            EXPECT_EQ(lines["crooked"], 0);
            const std::vector<Corner> after = cornersOf(folder / out);
            EXPECT_LT(spreadAlong(after, 1, 0.4), 1e-6F);
            EXPECT_LT(spreadAlong(after, 0, 0.6), 1e-6F);
        }
}

TEST_F(Relax, MovesNothingThatIsNotSelected)
{
    for (const std::string extension : {"obj", "glb"}) {
        prepare(sheets(2, slight, true), extension);
        const std::vector<Corner> before = cornersOf(folder / in);
        const auto idAt = [&](double x, double y) {
            for (const Corner& c : before)
                if (std::abs(c.position[0] - x) + std::abs(c.position[1] - y) < 1e-6)
                    return c.id;
            return 0U;
        };
        const std::string island = std::to_string(idAt(1.4, 0.4));
        const std::set<unsigned int> some{idAt(0.4, 0.4), idAt(0.6, 0.4), idAt(1.8, 0.8)};
        std::string list;
        for (const unsigned int id : some)
            list += (list.empty() ? "" : ",") + std::to_string(id);
        std::string lines = list;
        std::replace(lines.begin(), lines.end(), ',', '\n');
        const std::pair<std::string, std::string> selections[] = {
            {"--islands", island},
            {"--vertices", list},
            {"--vertex-file", folder.write("ids", "# some\n" + lines)}};
        for (const auto& [option, value] : selections) {
            SCOPED_TRACE(testing::Message() << extension << " " << option);
            const ToolRun selected = run({"optimize", "--shell", option, value, "--json"});
            ASSERT_EQ(selected.status, Done) << selected.err;
            const std::vector<Corner> after = cornersOf(folder / out);
            std::set<unsigned int> moved;
            ASSERT_EQ(after.size(), before.size());
            for (std::size_t i = 0; i < after.size(); ++i)
                if (after[i].uv != before[i].uv)
                    moved.insert(before[i].id);
            if (option == "--islands") {
                EXPECT_GE(moved.size(), std::size_t{30});
                EXPECT_GE(*moved.begin(), 36U); // those of the second sheet
            } else {
                EXPECT_EQ(moved, some);
            }
        }
    }
}

TEST_F(Relax, WithoutPowerWritesTheSameUVs)
{
    for (const std::string extension : {"obj", "glb"}) {
        prepare(sheets(2, tangled, false), extension);
        const ToolRun powerless = run({"optimize", "--power", "0", "--json"});
        ASSERT_EQ(powerless.status, Done) << powerless.err;
        EXPECT_EQ(powerless.json()["geometries"][0]["islandsDone"], 0);
        EXPECT_EQ(bytesOf(folder / out), bytesOf(folder / in));
    }
}

TEST_F(Relax, UnfoldingLaysLinesStraightOnBothSidesOfNewSeams)
{
    // Four edges of a cube that go the same way: at one of them at least it comes apart.
    const auto isOn = [](const Corner& c) {
        return std::abs(std::abs(c.position[0]) - 1) + std::abs(std::abs(c.position[1]) - 1) < 1e-6;
    };
    const auto sidesOn = [&isOn](const std::vector<Corner>& corners) {
        std::vector<std::pair<Corner, Corner>> sides;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Corner& next = corners[i % 3 == 2 ? i - 2 : i + 1];
            if (isOn(corners[i]) && isOn(next) && corners[i].position[2] != next.position[2])
                sides.emplace_back(corners[i], next);
        }
        return sides;
    };
    for (const std::string extension : {"obj", "glb"}) {
        SCOPED_TRACE(extension);
        prepare(ObjBuilder().cube(3).text(), extension);
        std::string edges;
        for (const auto& [a, b] : sidesOn(cornersOf(folder / in)))
            edges += std::to_string(a.id) + " " + std::to_string(b.id) + "\n";
        const ToolRun unfolded = run({"unfold", "--seams", "manufactured", "--resolution", "64",
                                      "--json", "--horizontal", folder.write("h", edges)});
        ASSERT_EQ(unfolded.status, Done) << unfolded.err;
        const nlohmann::json lines = unfolded.json()["geometries"][0]["lines"];
        EXPECT_EQ(lines["horizontalEdges"], 12);
        EXPECT_GT(lines["lines"], 4);
        EXPECT_EQ(lines["crooked"], 0);
        for (const auto& [a, b] : sidesOn(cornersOf(folder / out)))
            EXPECT_NEAR(a.uv[1], b.uv[1], 1e-6);
    }
}

TEST_F(Relax, SaysWhatCannotBeDone)
{
    const std::string bare = "o bare\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    const std::string some = folder.write("some", "0 1\n");
    const std::string far = folder.write("far", "0 35\n");
    const std::string odd = folder.write("odd", "0 x\n");
    const std::string ring = folder.write("ring", "0 1\n1 2\n2 3\n3 0\n");
    const std::string sheet = folder.write("two.obj", sheets(2, slight, true));
    const std::string none = folder.write("none.obj", bare);
    const std::string both = folder.write(
        "both.obj", sheets(2, slight, true) + "o bare\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf -1 -2 -3\n");
    const std::string dome = folder.write("dome.obj", ObjBuilder().dome(2).text());
    struct Case
    {
        std::vector<std::string> arguments;
        int status;
        const char* says;
    };
    const Case cases[] = {
        {{"optimize", none}, Failed, "no UVs in slot 0"},
        {{"optimize", both}, Done, "\"bare\": no UVs in slot 0, nothing to relax"},
        {{"constrain", sheet}, WrongUsage, "--horizontal"},
        {{"optimize", sheet, "--vertices", "1"}, WrongUsage, "2 geometries"},
        {{"constrain", sheet, "--vertical", some}, WrongUsage, "--vertical"},
        {{"optimize", sheet, "--islands", "1", "--vertices", "1"}, WrongUsage, "--islands"},
        {{"optimize", sheet, "--geometry", "0", "--islands", "36"},
         WrongUsage,
         "ids go from 0 to 35"},
        {{"optimize", sheet, "--shell", "--vertex-file", "none"}, Unreadable, "none"},
        {{"optimize", sheet, "--shell", "--vertex-file", odd}, Unreadable, "\"x\" is no vertex id"},
        {{"constrain", sheet, "--shell", "--vertical", far},
         Failed,
         "none of the pairs of vertices"},
        {{"constrain", sheet, "--shell", "--vertical", ring}, Failed, "none of the edges can be"},
        {{"optimize", sheet, "--shell", "--vertical", some, "--horizontal", some},
         Done,
         "held vertical"},
        {{"unfold", dome, "--vertical", some, "--align", "box"},
         WrongUsage,
         "would turn the edges"},
        {{"optimize", sheet, "--power", "1.5"}, WrongUsage, "--power"},
    };
    for (const Case& c : cases)
        expectTold(c.arguments, folder / out, c.status, c.says);
}

} // namespace
