#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "scene/SceneIslands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Corner = std::array<double, 3>;

/// Objects of an OBJ whose corners have their x and y, times `uvScale`, as UVs. Each lists all of
/// its positions and UVs itself.
class Objects
{
public:
    explicit Objects(double size = 1.0, double x0 = 0.0) : size_(size), x0_(x0) {}

    Objects& polygon(const std::string& name, const std::vector<Corner>& corners,
                     double uvShift = 0.0)
    {
        text_ += "o " + name + "\n";
        std::string face = "f";
        for (const auto& [x, y, z] : corners) {
            add("v", {x0_ + size_ * x, size_ * y, size_ * z});
            add("vt", {0.125 * x + uvShift, 0.125 * y});
            ++count_;
            face += " " + std::to_string(count_) + "/" + std::to_string(count_);
        }
        text_ += face + "\n";
        return *this;
    }
    /// The unit square over [x, x + 1] by [0, 1].
    Objects& square(const std::string& name, double x, double uvShift = 0.0)
    {
        return polygon(name, {{x, 0, 0}, {x + 1, 0, 0}, {x + 1, 1, 0}, {x, 1, 0}}, uvShift);
    }

    operator const std::string&() const { return text_; }

private:
    void add(const char* word, const std::vector<double>& numbers)
    {
        text_ += word;
        for (const double number : numbers) {
            std::array<char, 40> digits{};
            std::snprintf(digits.data(), digits.size(), " %.17g", number);
            text_ += digits.data();
        }
        text_ += "\n";
    }

    std::string text_;
    double size_;
    double x0_;
    int count_ = 0;
};

nlohmann::json islandsOf(const std::string& obj, std::vector<std::string> options = {})
{
    const TempFolder folder;
    options.insert(options.begin(), {"islands", folder.write("in.obj", obj), "--json"});
    const ToolRun run = runTool(options);
    EXPECT_EQ(run.status, Done) << run.err;
    return run.json();
}

TEST(Islands, OfAShellGoOnWhereSurfacesMeetAlongAnEdge)
{
    struct Case
    {
        const char* name;
        std::string obj;
        int islands;
        int borderEdges;
        int compactVertices;
    };
    const Case cases[] = {
        {"three squares in a row", Objects().square("a", 0).square("b", 1).square("c", 2), 1, 8, 8},
        {"a seam in UV", Objects().square("a", 0).square("b", 1, 0.5), 2, 8, 8},
        {"a point contact",
         Objects().square("a", 0).polygon("b", {{1, 1, 0}, {2, 1, 0}, {2, 2, 0}}), 2, 7, 7},
        {"a third sheet",
         Objects().square("a", 0).square("b", 1).polygon("c", {{1, 1, 0}, {1, 0, 0}, {1, .5, 1}}),
         3, 11, 11},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const nlohmann::json report = islandsOf(c.obj, {"--shell"});
        ASSERT_EQ(report["geometries"].size(), 1U);
        const nlohmann::json& shell = report["geometries"][0];
        EXPECT_EQ(shell["shell"], true);
        EXPECT_EQ(shell["islands"], c.islands);
        EXPECT_EQ(shell["islandList"].size(), static_cast<std::size_t>(c.islands));
        EXPECT_EQ(shell["borderEdges"], c.borderEdges);
        EXPECT_EQ(shell["compactVertices"], c.compactVertices);
    }
}

TEST(Islands, TellWhatTheShellAndEachIslandIsMadeOf)
{
    const std::string obj = Objects().square("a", 0).square("b", 3).square("c", 1);
    const nlohmann::json report = islandsOf(obj, {"--shell", "--list"});
    EXPECT_EQ(report["command"], "islands");
    EXPECT_EQ(report["slot"], 0);
    const nlohmann::json& shell = report["geometries"][0];
    EXPECT_EQ(shell["name"], "in");
    EXPECT_EQ(shell["surfaces"], 3);
    EXPECT_EQ(shell["vertices"], 12);
    EXPECT_EQ(shell["polygons"], 3);
    EXPECT_EQ(shell["triangles"], 6);
    EXPECT_EQ(shell["slots"], nlohmann::json::parse("[0]"));
    EXPECT_EQ(shell["islandList"], nlohmann::json::parse(R"([
        {"island": 0, "triangles": 4, "vertices": 6, "borderEdges": 6, "seed": 0},
        {"island": 1, "triangles": 2, "vertices": 4, "borderEdges": 4, "seed": 4}])"));
}

TEST(Islands, OfGeometriesByThemselvesHaveIdsOfTheirOwn)
{
    const std::string obj = Objects().square("a", 0).square("b", 1);
    const nlohmann::json report = islandsOf(obj, {"--list"});
    ASSERT_EQ(report["geometries"].size(), 2U);
    for (const nlohmann::json& geometry : report["geometries"]) {
        EXPECT_EQ(geometry["shell"], false);
        EXPECT_EQ(geometry["surfaces"], 1);
        EXPECT_EQ(geometry["islands"], 1);
        EXPECT_EQ(geometry["islandList"][0]["seed"], 0);
    }
    const nlohmann::json one = islandsOf(obj, {"--geometry", "1"});
    ASSERT_EQ(one["geometries"].size(), 1U);
    EXPECT_EQ(one["geometries"][0]["name"], "b");
    EXPECT_FALSE(one["geometries"][0]["islandList"][0].contains("seed"));
}

TEST(Islands, HaveSeedsThatCountInOrderOfFirstUse)
{
    const nlohmann::json report = islandsOf("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 9 9 9\n"
                                            "v 5 0 0\nv 6 0 0\nv 5 1 0\nv 6 1 0\n"
                                            "f 6 7 5\nf 3 1 2\nf 7 6 8\n",
                                            {"--list"});
    const nlohmann::json& geometry = report["geometries"][0];
    EXPECT_EQ(geometry["vertices"], 7);
    EXPECT_EQ(geometry["islandList"], nlohmann::json::parse(R"([
        {"island": 0, "triangles": 1, "vertices": 3, "borderEdges": 3, "seed": 3},
        {"island": 1, "triangles": 2, "vertices": 4, "borderEdges": 4, "seed": 0}])"));
}

/// A normal of its own at each side of an edge splits vertices, but neither position nor UV.
TEST(Islands, GoAcrossHardEdges)
{
    const nlohmann::json report =
        islandsOf("v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
                  "vn 0 0 1\nvn 0 1 0\nf 1/1/1 2/2/1 3/3/1\nf 1/1/2 3/3/2 4/4/2\n");
    const nlohmann::json& geometry = report["geometries"][0];
    EXPECT_EQ(geometry["vertices"], 6);
    EXPECT_EQ(geometry["compactVertices"], 4);
    EXPECT_EQ(geometry["islands"], 1);
    EXPECT_EQ(geometry["borderEdges"], 4);
}

TEST(Islands, AreTheSameAtEverySizeAndPlace)
{
    const auto countsAt = [](double size, double x0) {
        const nlohmann::json shell =
            islandsOf(Objects(size, x0).square("a", 0).square("b", 1).square("c", 2, 0.5),
                      {"--shell", "--list"})["geometries"][0];
        return std::pair(shell["islandList"], shell["compactVertices"]);
    };
    const auto expected = countsAt(1.0, 0.0);
    EXPECT_EQ(expected.first.size(), 2U);
    EXPECT_EQ(countsAt(1e-9, 0.0), expected);
    EXPECT_EQ(countsAt(1e12, 0.0), expected);
    EXPECT_EQ(countsAt(1.0, 1e9), expected);
}

TEST(Islands, WithoutUVsGoByPositionAndSaySo)
{
    const TempFolder folder;
    const std::string in = folder.write("in.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                                                  "f 1 2 3 4\no mapped\nvt 0 0\nvt 1 0\nvt 1 1\n"
                                                  "v 5 0 0\nv 6 0 0\nv 6 1 0\nf 5/1 6/2 7/3\n");
    const ToolRun each = runTool({"islands", in});
    EXPECT_EQ(each.status, Done);
    EXPECT_THAT(each.err, HasSubstr("no UVs in slot 0, its islands go by position alone"));
    EXPECT_EQ(each.lineCount(), 1);
    const ToolRun shell = runTool({"islands", in, "--shell", "--json"});
    EXPECT_THAT(shell.err, HasSubstr("1 of 2 surfaces have no UVs in slot 0"));
    EXPECT_EQ(shell.json()["geometries"][0]["islands"], 2);
}

TEST(Islands, PrintATableAndDrawThePicture)
{
    const TempFolder folder;
    const std::string in =
        folder.write("in.obj", Objects().square("left", 0).square("right", 1, 0.5));
    const std::string picture = folder / "layout.svg";
    const ToolRun run = runTool({"islands", in, "--shell", "--list", "--picture", picture});
    EXPECT_EQ(run.status, Done);
    EXPECT_THAT(run.err, IsEmpty());
    EXPECT_THAT(run.out, HasSubstr("1 geometry, 4 triangles"));
    EXPECT_THAT(run.out, HasSubstr("a shell of 2 surfaces"));
    EXPECT_THAT(run.out, HasSubstr("seed"));
    EXPECT_THAT(bytesOf(picture), HasSubstr("2 islands"));
    const ToolRun each = runTool({"islands", in, "--picture", picture});
    EXPECT_THAT(each.out, Not(HasSubstr("seed")));
    EXPECT_THAT(bytesOf(picture), HasSubstr("2 islands"));
}

TEST(Islands, OfAShellAreWhatInfoTellsAsWell)
{
    const TempFolder folder;
    const std::string in = folder.write("in.obj", Objects().square("a", 0).square("b", 1));
    const nlohmann::json report = runTool({"info", in, "--shell", "--json"}).json();
    ASSERT_EQ(report["geometries"].size(), 1U);
    const nlohmann::json& shell = report["geometries"][0];
    EXPECT_EQ(shell["shell"], true);
    EXPECT_EQ(shell["surfaces"], 2);
    EXPECT_EQ(shell["islands"], 1);
    EXPECT_EQ(shell["borderEdges"], 6);
    EXPECT_EQ(shell["compactVertices"], 6);
    EXPECT_EQ(shell["check"]["sound"], true);
    EXPECT_EQ(shell["check"]["islands"], 1);
    EXPECT_FALSE(shell.contains("islandList"));
    EXPECT_EQ(runTool({"info", in, "--json"}).json()["geometries"][1]["compactVertices"], 4);
}

/// Readers give no such geometry; whatever does is told which surface it is.
TEST(Islands, FaultySurfacesArePassedOverAndNamed)
{
    Document document;
    for (const char* const name : {"whole", "torn"}) {
        DocumentGeometry& geometry = document.geometries.emplace_back();
        geometry.name = name;
        geometry.positions.values = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        geometry.positions.ofCorner = {0, 1, 2};
        geometry.polygonOffsets = {0, 3};
        geometry.triangles = {0, 1, 2};
        geometry.polygonOfTriangle = {0};
    }
    document.geometries[1].triangles.push_back(0);
    std::ostringstream text;
    Console console(text, text, false);
    const std::array<std::size_t, 2> numbers{1, 0};
    const SceneGeometry scene = makeShellScene(document, numbers, 0);
    const SceneIslands found = findSceneIslands(document, scene, 0, console);
    EXPECT_EQ(scene.vertexCount, 3U);
    EXPECT_EQ(found.islands.size(), 1U);
    ASSERT_FALSE(found.warnings.empty());
    EXPECT_EQ(found.warnings[0], "surface 1 \"torn\" is passed over: not a triangle mesh, "
                                 "inconsistent primitive lengths");
}

} // namespace
