// Islands of real meshes against counts that were made by other means: the parts of equal positions
// and UVs, and for the shells a plain weld of their borders. Where surfaces meet in a point only,
// or where an edge of one runs inside another, the weld stays open and the shell has more islands
// than such parts: 46 in open_shell, 196 in motor, 135 in race_car, 34 in hammer_unsewn.

#include "uvtool/ToolRun.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

std::size_t islandsIn(const std::filesystem::path& file, bool asShell)
{
    std::vector<std::string> arguments{"islands", file.string(), "--json", "--quiet"};
    if (asShell)
        arguments.emplace_back("--shell");
    const nlohmann::json report = runTool(arguments).json();
    std::size_t islands = 0;
    for (const nlohmann::json& geometry : report["geometries"])
        islands += geometry["islands"].get<std::size_t>();
    return islands;
}

TEST(IslandsOfMeshes, AgreeWithAnIndependentCount)
{
    struct Case
    {
        const char* file;
        bool asShell;
        std::size_t islands;
    };
    const Case cases[] = {
        {"spot.obj", false, 13},       {"pizza_scan.obj", false, 4740}, {"hele_shaw.obj", false, 1},
        {"milk_truck.obj", false, 45}, {"milk_truck.obj", true, 39},    {"linkrods.obj", false, 37},
        {"linkrods.obj", true, 37},    {"open_shell.obj", true, 97},    {"motor.obj", true, 213},
        {"race_car.obj", true, 142},   {"hammer_unsewn.obj", true, 38}, {"bunny.obj", true, 1},
    };
    const std::filesystem::path folder = KYUV_MESHES;
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << folder << " is absent";
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.file) + (c.asShell ? " --shell" : ""));
        EXPECT_EQ(islandsIn(folder / c.file, c.asShell), c.islands);
    }
}

} // namespace
