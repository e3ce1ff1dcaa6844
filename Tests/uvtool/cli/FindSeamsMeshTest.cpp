// From real meshes to finished UVs in one command, with every mode of seams.

#include "uvtool/SameButUVs.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"
#include "uvtool/WrittenIslands.h"

#include "document/Format.h"

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

const std::filesystem::path meshes = KYUV_MESHES;

std::string pathOf(const std::string& name)
{
    return meshes / (name + ".obj");
}

/// The entry of the only geometry, or the shell, after it was unfolded.
nlohmann::json unfolded(const std::string& in, const std::string& out,
                        std::vector<std::string> options)
{
    options.insert(options.begin(), {"unfold", in, "-o", out, "--json", "--quiet", "--resolution",
                                     "512", "--slot", "0"});
    const ToolRun run = runTool(options);
    EXPECT_EQ(run.status, Done) << run.err; // the result has passed the check then
    return run.status == Done ? run.json()["geometries"][0] : nlohmann::json{};
}

/// Limits for the modes organic and manufactured, as a person would set them. Seams count in
/// diagonals of the box, 4 is the energy of a layout without distortion.
struct Limits
{
    std::size_t islands;
    double length;
    double energy;
};

struct Case
{
    const char* name;
    const char* kind; ///< that `auto` has to choose
    bool isClosed;
    Limits organic;
    Limits manufactured;
};

TEST(FindSeamsOfMeshes, ModesOpenClosedMeshesWithinLimits)
{
    if (!std::filesystem::exists(meshes))
        GTEST_SKIP() << meshes << " is absent";
    const Case cases[] = {
        {"spot", "organic", true, {20, 10, 4.6}, {100, 30, 4.3}},
        {"bunny", "organic", false, {20, 10, 4.6}, {300, 40, 4.4}},
        {"sword_quads", "organic", true, {20, 10, 4.6}, {60, 20, 4.3}},
        {"turbine", "manufactured", true, {40, 40, 4.6}, {100, 40, 4.1}},
        {"linkrods", "manufactured", true, {20, 20, 4.6}, {60, 30, 4.1}},
        {"housing", "manufactured", true, {60, 60, 4.6}, {320, 70, 4.1}},
        {"motor", "manufactured", false, {60, 60, 4.6}, {220, 60, 4.1}},
    };
    for (const Case& c : cases) {
        const TempFolder folder;
        const std::string out = folder / "out.obj";
        for (const std::string mode : {"organic", "manufactured", "baking"}) {
            SCOPED_TRACE(c.name + (" " + mode));
            const nlohmann::json entry =
                unfolded(pathOf(c.name), out, {"--shell", "--seams", mode});
            ASSERT_FALSE(entry.is_null());
            const Limits& limits = mode == "organic" ? c.organic : c.manufactured;
            EXPECT_LE(entry["seams"]["islands"], limits.islands);
            EXPECT_LE(entry["seams"]["length"], limits.length);
            EXPECT_LE(entry["energy"], limits.energy);
            EXPECT_TRUE(entry["closedIslands"].empty());
            EXPECT_TRUE(entry["keptIslands"].empty());
            EXPECT_LE(entry["splitPolygons"], entry["polygons"].get<std::size_t>() / 1000);
            EXPECT_TRUE(entry["surfaces"] > 1 || mode != "organic" ||
                        writtenIslands(out).areOpen());
        }
        const nlohmann::json chosen =
            runTool({"seams", pathOf(c.name), "--shell", "--json"}).json()["geometries"][0];
        EXPECT_EQ(chosen["seams"]["mode"], c.kind) << c.name;
    }
}

TEST(FindSeamsOfMeshes, MeshesWithEveryDefectComeOutSoundAndOtherwiseUnchanged)
{
    if (!std::filesystem::exists(meshes))
        GTEST_SKIP() << meshes << " is absent";
    const std::pair<const char*, const char*> cases[] = {{"milk_truck", "manufactured"},
                                                         {"race_car", "manufactured"},
                                                         {"cycloidal", "manufactured"},
                                                         {"open_shell", "manufactured"},
                                                         {"max_face", "organic"}};
    for (const auto& [name, kind] : cases)
        for (const char* const extension : {".obj", ".glb"}) {
            SCOPED_TRACE(std::string(name) + extension);
            const TempFolder folder;
            const std::string in = folder / (std::string("in") + extension);
            const std::string out = folder / (std::string("out") + extension);
            writeDocument(readDocument(pathOf(name)), in);
            const nlohmann::json shell = unfolded(in, out, {"--shell", "--seams", "auto"});
            EXPECT_EQ(shell["seams"]["mode"], kind);
            EXPECT_TRUE(shell["keptIslands"].empty());
            expectSameButUVs(out, in);
        }
}

TEST(FindSeamsOfMeshes, TheSizeOfAMeshMakesNoDifference)
{
    if (!std::filesystem::exists(meshes))
        GTEST_SKIP() << meshes << " is absent";
    for (const char* const name : {"spot", "turbine"}) {
        const auto seamsAt = [name](double scale) {
            const TempFolder folder;
            Document document = readDocument(pathOf(name));
            for (DocumentGeometry& geometry : document.geometries)
                for (Vec3d& position : geometry.positions.values)
                    for (double& x : position)
                        x *= scale;
            document.payload.reset(); // written anew
            writeDocument(document, folder / "in.obj");
            return runTool({"seams", folder / "in.obj", "--json"}).json()["geometries"][0]["seams"];
        };
        const nlohmann::json seams = seamsAt(1.0);
        for (const double scale : {0.001, 1000.0}) {
            const nlohmann::json scaled = seamsAt(scale);
            for (const char* const key : {"mode", "edges", "islands"})
                EXPECT_EQ(scaled[key], seams[key]) << name << " times " << scale << " " << key;
        }
    }
}

} // namespace
