// Repairs of real meshes, as they are read again.

#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

std::vector<Vec3d> cornersIn(const std::filesystem::path& file)
{
    std::vector<Vec3d> corners;
    for (const DocumentGeometry& geometry : readDocument(file).geometries)
        for (const std::uint32_t corner : geometry.triangles)
            corners.push_back(geometry.positions.at(corner));
    return corners;
}

TEST(RepairOfMeshes, LeavesNothingSingularAndMovesNothing)
{
    const std::filesystem::path meshes = KYUV_MESHES;
    if (!std::filesystem::exists(meshes))
        GTEST_SKIP() << meshes << " is absent";
    for (const auto& entry : std::filesystem::directory_iterator(meshes))
        for (const char* const name : {"out.obj", "out.glb"}) {
            if (entry.path().extension() != ".obj")
                continue;
            SCOPED_TRACE(entry.path().string() + " to " + name);
            const TempFolder folder;
            ASSERT_EQ(runTool({"repair", entry.path(), "-o", folder / name}).status, Done);
            EXPECT_TRUE(name == std::string("out.glb") ||
                        cornersIn(folder / name) == cornersIn(entry.path()));
            const ToolRun again = runTool({"repair", folder / name, "-o", folder / "2.obj"});
            EXPECT_NE(again.err.find("nothing singular"), std::string::npos) << again.err;
        }
}

} // namespace
