// uvtool project: where images fall, and files of settings.

#include "uvtool/ObjBuilders.h"
#include "uvtool/ProjectedFile.h"
#include "uvtool/SameButUVs.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"
#include "uvtool/formats/GltfSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <random>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

using testing::HasSubstr;
using Words = std::vector<std::string>;

ToolRun project(const std::string& kind, const std::filesystem::path& in,
                const std::filesystem::path& out, const Words& more = {})
{
    Words words{"project", kind, "--json"};
    words.insert(words.end(), more.begin(), more.end());
    words.insert(words.end(), {in, "-o", out});
    return runTool(words);
}

/// Expects u = p * U and v = p * V at all corners, about a middle of the image at 0.5.
void expectPlane(const MappedTriangle& triangle, const Vec3d& u, const Vec3d& v)
{
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_NEAR(triangle.uvs[k][0], 0.5 + dot(triangle.positions[k], u), 2e-6);
        EXPECT_NEAR(triangle.uvs[k][1], 0.5 + dot(triangle.positions[k], v), 2e-6);
    }
}

/// A square of 2 by 2 that a node takes to [-1, 1] x {3} x [-1, 1], y and z changing places.
std::string placedSquare()
{
    GltfSample sample;
    const SquareArrays square;
    auto& primitive = sample.addMesh(square.positions);
    primitive["indices"] = sample.add(1, square.indices);
    sample.json["nodes"] = {{{"mesh", 0},
                             {"translation", {-1, 3, 1}},
                             {"rotation", {-std::sqrt(0.5), 0, 0, std::sqrt(0.5)}}},
                            {{"mesh", 0}, {"translation", {50, 50, 50}}}};
    return sample.glb();
}

TEST(ProjectCommand, LooksAtThePlaneFromEachSide)
{
    struct Case
    {
        const char* side;
        const char* up;
        Vec3d u, v;
    };
    const Case cases[] = {
        {"front", "y", {1, 0, 0}, {0, 1, 0}},  {"back", "y", {-1, 0, 0}, {0, 1, 0}},
        {"right", "y", {0, 0, -1}, {0, 1, 0}}, {"left", "y", {0, 0, 1}, {0, 1, 0}},
        {"top", "y", {1, 0, 0}, {0, 0, -1}},   {"bottom", "y", {1, 0, 0}, {0, 0, 1}},
        {"front", "z", {1, 0, 0}, {0, 0, 1}},  {"back", "z", {-1, 0, 0}, {0, 0, 1}},
        {"right", "z", {0, 1, 0}, {0, 0, 1}},  {"left", "z", {0, -1, 0}, {0, 0, 1}},
        {"top", "z", {1, 0, 0}, {0, 1, 0}},    {"bottom", "z", {1, 0, 0}, {0, -1, 0}},
    };
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().cube(2).text());
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.side) + " " + c.up);
        const ToolRun run = project("planar", in, folder / "out.obj",
                                    {"--from", c.side, "--up", c.up, "--scale", "1", "2"});
        ASSERT_EQ(run.status, Done) << run.err;
        for (const MappedTriangle& triangle : mappedTriangles(folder / "out.obj")) {
            const auto scaled = [](Vec3d axis, double size) {
                for (double& x : axis)
                    x /= size;
                return axis;
            };
            expectPlane(triangle, scaled(c.u, 2), scaled(c.v, 4));
        }
        expectSameButUVs(folder / "out.obj", in); // polygons are still polygons
        EXPECT_EQ(run.json()["projection"]["up"], c.up);
        EXPECT_EQ(run.json()["geometries"][0]["splitPolygons"], 0);
    }
}

TEST(ProjectCommand, WrapsOnceAroundTheAxis)
{
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().torus(12, 8).text()); // around z
    const ToolRun run = project("cylindrical", in, folder / "out.obj",
                                {"--axis", "z", "--angle", "360", "--turn", "180"});
    ASSERT_EQ(run.status, Done) << run.err;
    for (const MappedTriangle& triangle : mappedTriangles(folder / "out.obj")) {
        const auto [low, high] =
            std::minmax({triangle.uvs[0][0], triangle.uvs[1][0], triangle.uvs[2][0]});
        EXPECT_LT(high - low, 0.5F); // in one piece across the seam
        for (std::size_t k = 0; k < 3; ++k) {
            // Upside down, the middle of the image on -y.
            const Vec3d& p = triangle.positions[k];
            const double angle = 2 * std::numbers::pi * (0.5 - double{triangle.uvs[k][0]});
            EXPECT_NEAR(std::hypot(p[0], p[1]) * std::sin(angle), p[0], 1e-5);
            EXPECT_NEAR(std::hypot(p[0], p[1]) * std::cos(angle), -p[1], 1e-5);
            EXPECT_NEAR(triangle.uvs[k][1], 0.5 - p[2] / 0.8, 1e-5);
        }
    }
    EXPECT_EQ(run.json()["geometries"][0]["splitPolygons"], 8); // those across the seam
    EXPECT_EQ(run.json()["geometries"][0]["islands"], 1);
}

TEST(ProjectCommand, GivesACubeSixChartsAsTheTableOfAxesTells)
{
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().cubeOfPatches(2).text());
    for (const Words& more : {Words{}, Words{"--mode", "propagated", "--shell"}})
        for (const char* const out : {"out.obj", "out.glb"}) {
            const ToolRun run = project("triplanar", in, folder / out, more);
            ASSERT_EQ(run.status, Done) << run.err;
            EXPECT_EQ(run.json()["check"]["islands"], 6);
            EXPECT_EQ(run.json()["check"]["area"], 6);
            EXPECT_EQ(run.json()["check"]["flipped"], 0);
            for (const MappedTriangle& triangle : mappedTriangles(folder / out)) {
                const Vec3d n = triangle.normal();
                if (std::abs(n[2]) > 0.1)
                    expectPlane(triangle, {n[2] > 0 ? 0.5 : -0.5, 0, 0}, {0, 0.5, 0});
                else if (std::abs(n[0]) > 0.1)
                    expectPlane(triangle, {0, n[0] > 0 ? 0.5 : -0.5, 0}, {0, 0, 0.5});
                else
                    expectPlane(triangle, {n[1] > 0 ? -0.5 : 0.5, 0, 0}, {0, 0, 0.5});
            }
        }
}

TEST(ProjectCommand, ActsInTheSceneInWhichNodesPlaceTheMeshes)
{
    const TempFolder folder;
    const auto in = folder.write("in.glb", placedSquare());
    // Without a side, that is taken which shows the most, for the usual one shows an edge.
    for (Words words : {Words{"--from", "top"}, Words{"--from", "top", "--shell"}, Words{}}) {
        words.insert(words.end(), {"--slot", "2"});
        const ToolRun run = project("planar", in, folder / "out.glb", words);
        ASSERT_EQ(run.status, Done) << run.err;
        for (const MappedTriangle& triangle : mappedTriangles(folder / "out.glb", 2))
            expectPlane(triangle, {0.5, 0, 0}, {0, 0, -0.5});
        EXPECT_EQ(run.json()["projection"]["settings"]["center"], nlohmann::json({0.0, 3.0, 0.0}));
        EXPECT_EQ(mappedTriangles(folder / "out.glb").size(), 8U);
    }
    const ToolRun edgeOn = project("planar", in, folder / "no.glb", {"--from", "front"});
    EXPECT_EQ(edgeOn.status, Failed);
    EXPECT_THAT(edgeOn.err, HasSubstr("nothing but an edge of the meshes; name another side"));
    EXPECT_FALSE(std::filesystem::exists(folder / "no.glb"));
}

TEST(ProjectCommand, FindsSidesWhateverTheUnitsAre)
{
    const TempFolder folder;
    Document sphere = readDocument(folder.write("in.obj", ObjBuilder().cube(12, true).text()));
    const std::string large = folder / "large.glb";
    const std::string small = folder / "small.glb";
    writeDocument(sphere, large);
    for (Vec3d& position : sphere.geometries[0].positions.values)
        for (double& x : position)
            x *= 0x1p-12;
    writeDocument(sphere, small);
    std::vector<std::size_t> islands;
    for (const char* const mode : {"dominant", "propagated"}) {
        const ToolRun run = project("triplanar", large, folder / "out.glb", {"--mode", mode});
        ASSERT_EQ(run.status, Done) << run.err;
        ASSERT_EQ(project("triplanar", small, folder / "out2.glb", {"--mode", mode}).status, Done);
        const auto triangles = mappedTriangles(folder / "out.glb");
        const auto smallTriangles = mappedTriangles(folder / "out2.glb");
        for (std::size_t t = 0; t < triangles.size(); ++t)
            EXPECT_EQ(triangles[t].uvs, smallTriangles[t].uvs);
        islands.push_back(run.json()["geometries"][0]["islands"]);
    }
    EXPECT_GE(islands[0], islands[1]);
    EXPECT_EQ(islands[1], 6U);
}

TEST(ProjectCommand, TellsOfTrianglesWithoutAnArea)
{
    const TempFolder folder;
    const auto in =
        folder.write("in.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 2 0 0\nf 1 2 3\nf 1 2 4\n");
    const ToolRun run = project("triplanar", in, folder / "out.obj", {"--mode", "propagated"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_THAT(run.err, HasSubstr("1 triangle has no area in the scene"));
    const auto triangles = mappedTriangles(folder / "out.obj");
    EXPECT_EQ(triangles[1].uvs, (std::array{Vec2f{}, Vec2f{}, Vec2f{}}));
    EXPECT_NE(triangles[0].uvs[1], Vec2f{});
}

TEST(ProjectSettings, RepeatAProjectionToTheLastBit)
{
    struct Case
    {
        const char* kind;
        Words options;
        Words keys;
    };
    const Case cases[] = {
        {"planar",
         {"--image", "300x200", "--rotate", "10", "20.1234567", "30", "--offset", "-0.1", "0.2"},
         {"TMProjectionRotateTheta", "TMOffsetX", "TMSizeX"}},
        {"cylindrical",
         {"--image", "300x200", "--angle", "123.4567891", "--turn", "-7"},
         {"TMCylUA", "TMCylRZ2D", "TMAspectRatio"}},
        {"triplanar",
         {"--mode", "propagated", "--repeat-u", "1", "2", "-3", "--turn", "5", "6.54321987", "0"},
         {"TMTriplanarMode", "TMTriplanarRepeatUZ", "TMTriplanarRotate2DY"}}};
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().torus(9, 6).text());
    for (const Case& c : cases)
        for (const std::string slot : {"0", "1", "5"}) {
            SCOPED_TRACE(c.kind + slot);
            Words first{"--slot", slot, "--up", "z", "--save-settings", folder / "1.json"};
            first.insert(first.end(), c.options.begin(), c.options.end());
            ASSERT_EQ(project(c.kind, in, folder / "1.glb", first).status, Done);
            const ToolRun again =
                project(c.kind, in, folder / "2.glb",
                        {"--slot", slot, "--up", "z", "--settings", folder / "1.json",
                         "--save-settings", folder / "2.json"});
            ASSERT_EQ(again.status, Done) << again.err;
            EXPECT_EQ(bytesOf(folder / "1.glb"), bytesOf(folder / "2.glb"));
            EXPECT_EQ(bytesOf(folder / "1.json"), bytesOf(folder / "2.json"));
            const auto texts = nlohmann::json::parse(bytesOf(folder / "1.json"));
            for (const std::string& key : c.keys)
                EXPECT_TRUE(texts.contains((slot == "1" ? "LM_" : "") + key)) << key;
            // Each slot sees its own settings only.
            const ToolRun other =
                project(c.kind, in, folder / "3.glb",
                        {"--slot", slot == "1" ? "0" : "1", "--settings", folder / "1.json"});
            EXPECT_EQ(other.status, Unreadable);
            EXPECT_THAT(other.err, HasSubstr("1.json: holds no settings of a " +
                                             std::string(c.kind) + " projection for slot"));
        }
}

/// Single options come on top of the file, and what the projection doesn't know stays in it.
TEST(ProjectSettings, TakeSingleOptionsAndKeepWhatElseThereIs)
{
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().cube(1).text());
    const auto file = folder.write(
        "in.json", R"({"TMProjectionCenterX": "1", "TMProjectionRotatePhi": "15", "other": "\u00e9",
                       "TMProjectionScaleX": "1", "TMScaleBehaviour": "2", "LM_TMSizeX": "junk"})");
    const ToolRun run = project("planar", in, folder / "out.obj",
                                {"--settings", file, "--size", "4", "8", "--save-settings", file});
    ASSERT_EQ(run.status, Done) << run.err;
    const auto settings = run.json()["projection"]["settings"];
    EXPECT_EQ(settings["center"], nlohmann::json({1.0, 0.0, 0.0}));
    EXPECT_EQ(settings["rotate"], nlohmann::json({15.0, 0.0, 0.0}));
    EXPECT_EQ(settings["size"], nlohmann::json({4.0, 8.0}));
    const auto texts = nlohmann::json::parse(bytesOf(file));
    EXPECT_EQ(texts["TMSizeY"], "8");
    EXPECT_EQ(texts["other"], "\u00e9");
    EXPECT_EQ(texts["LM_TMSizeX"], "junk");
    EXPECT_FALSE(texts.contains("TMScaleBehaviour"));
}

TEST(ProjectCommand, RefusesWhatItCannotDo)
{
    const auto planarWith = [](const std::string& more) {
        return R"({"TMProjectionCenterX": "1", "TMProjectionRotatePhi": "2",
                   "TMProjectionScaleX": "1", )" +
               more + "}";
    };
    const std::string triplanar = R"({"TMTriplanarOffsetUX": "0", "TMTriplanarOffsetUY": "0",
                                      "TMTriplanarOffsetUZ": "0"})";
    struct Case
    {
        const char* kind;
        Words options;
        std::string settings; ///< empty for no file
        int status;
        std::string message;
    };
    const Case cases[] = {
        {"spherical", {}, "", WrongUsage, "no command \"project spherical\""},
        {"planar", {"--repeat-u", "1", "1", "1"}, "", WrongUsage, "--repeat-u"},
        {"triplanar", {"--angle", "90"}, "", WrongUsage, "--angle"},
        {"planar", {"--center", "1", "nan", "2"}, "", WrongUsage, "--center: \"nan\""},
        {"planar", {"--size", "1", "0"}, "", WrongUsage, "--size: \"0\""},
        {"cylindrical", {"--angle", "0"}, "", WrongUsage, "--angle: it can't be 0"},
        {"planar", {"--image", "12x"}, "", WrongUsage, "--image: \"12x\""},
        {"planar", {"--from", "top", "--rotate", "1", "2", "3"}, "", WrongUsage, "--from"},
        {"planar", {"--image", "1x1"}, "{}", WrongUsage, "--image excludes --settings"},
        {"planar", {}, "[]", Unreadable, "s.json: settings are a JSON object of texts"},
        {"planar", {}, "{\n\"a\": \"b\"", Unreadable, "s.json: not valid JSON at line 2"},
        {"planar", {}, "{\"a\": {\"b\": 1}}", Unreadable, "s.json: JSON within JSON"},
        {"planar", {}, "{\"TMSizeX\": 4}", Unreadable, "s.json: \"TMSizeX\" is no text"},
        {"planar", {}, triplanar, Unreadable, "s.json: holds no settings of a planar"},
        {"planar", {}, planarWith(R"("TMSizeX": "4 m")"), Unreadable, "holds \"4 m\", which is no"},
        {"planar", {}, planarWith(R"("TMAspectRatio": "inf")"), Unreadable, "holds \"inf\""},
        {"planar", {}, planarWith(R"("TMKeepAspectRatio": "so")"), Unreadable, "holds \"so\""},
        {"planar", {}, planarWith(R"("TMSizeX": "0")"), Failed, "give --size"},
        {"triplanar", {}, triplanar, Failed, "the image would have no size, it is 0 by"},
    };
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().cube(1).text());
    for (const Case& c : cases) {
        Words options = c.options;
        if (!c.settings.empty())
            options.insert(options.end(), {"--settings", folder.write("s.json", c.settings)});
        options.insert(options.begin(), {"project", c.kind, in});
        expectTold(options, folder / "out.obj", c.status, c.message);
    }
}

TEST(ProjectSettings, SurviveAnyDamage)
{
    const TempFolder folder;
    const auto in = folder.write("in.obj", ObjBuilder().cube(1).text());
    std::mt19937 random(3);
    const auto pick = [&random](std::size_t count) { return random() % count; };
    std::map<int, int> countOfStatus;
    for (const char* const kind : {"planar", "cylindrical", "triplanar"}) {
        const auto whole = folder / "whole.json";
        ASSERT_EQ(project(kind, in, folder / "out.obj", {"--save-settings", whole}).status, Done);
        for (int i = 0; i < 50; ++i) {
            std::string text = bytesOf(whole);
            for (std::size_t damages = 1 + pick(3); damages > 0; --damages) {
                const std::size_t at = pick(text.size());
                if (pick(2) == 0)
                    text.replace(at, pick(8), std::string(pick(4), "0159e-+.\"n\xff"[pick(11)]));
                else
                    text[text.find_first_of("0123456789", at) % text.size()] =
                        "0159e-.\"x"[pick(9)];
            }
            SCOPED_TRACE(text);
            const ToolRun run = project(kind, in, folder / "out.obj",
                                        {"--settings", folder.write("damaged.json", text)});
            ++countOfStatus[run.status];
            if (run.status == Done)
                for (const MappedTriangle& triangle : mappedTriangles(folder / "out.obj"))
                    EXPECT_TRUE(std::isfinite(triangle.uvs[0][0] + triangle.uvs[2][1]));
            else
                EXPECT_EQ(run.lineCount(), 1) << run.err;
        }
    }
    EXPECT_GT(countOfStatus[Done], 10);
    EXPECT_GT(countOfStatus[Unreadable], 10);
    countOfStatus.erase(Failed);  // an image without a size
    countOfStatus.erase(Unsound); // UVs beyond single precision
    EXPECT_EQ(countOfStatus.size(), 2U);
}

} // namespace
