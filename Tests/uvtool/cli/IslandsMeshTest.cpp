// Islands of real meshes against counts that were made by other means: the components of triangles
// that share an edge with equal positions and UVs at both ends. Where two surfaces meet in a point,
// or three along an edge, the compact mesh is open and has more.

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
    std::size_t islands = 0;
    for (const nlohmann::json& geometry : runTool(arguments).json()["geometries"])
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
        {"spot.obj", false, 13},      {"pizza_scan.obj", false, 4740}, {"hele_shaw.obj", false, 1},
        {"linkrods.obj", false, 37},  {"linkrods.obj", true, 37},      {"bunny.obj", true, 1},
        {"open_shell.obj", true, 98},
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
