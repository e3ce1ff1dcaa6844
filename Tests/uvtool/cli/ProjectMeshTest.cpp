// Projections of real meshes, and what a repair finds afterwards.

#include "uvtool/MeshFiles.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

bool hasUVsEverywhere(const std::filesystem::path& file)
{
    for (const DocumentGeometry& geometry : readDocument(file).geometries)
        for (const std::uint32_t corner : geometry.triangles)
            if (!geometry.uvs[0].has(corner))
                return false;
    return true;
}

TEST(ProjectionsOfMeshes, ReachEveryTriangleAndMoveNothing)
{
    const auto meshes = objMeshes();
    if (meshes.empty())
        GTEST_SKIP() << KYUV_MESHES << " is absent";
    for (const std::filesystem::path& in : meshes)
        for (const std::vector<std::string>& kind :
             {std::vector<std::string>{"planar", "--from", "front"},
              {"cylindrical"},
              {"triplanar"},
              {"triplanar", "--mode", "propagated"}})
        {
            SCOPED_TRACE(kind.back() + " of " + in.string());
            const TempFolder folder;
            std::vector<std::string> words{"project", kind[0], in, "-o", folder / "out.obj"};
            words.insert(words.end(), kind.begin() + 1, kind.end());
            const ToolRun run = runTool(words);
            ASSERT_EQ(run.status, Done) << run.err;
            EXPECT_TRUE(hasUVsEverywhere(folder / "out.obj"));
            EXPECT_TRUE(cornersIn(folder / "out.obj") == cornersIn(in));
            if (kind[0] != "triplanar")
                continue;
            ASSERT_EQ(runTool({"repair", folder / "out.obj", "-o", folder / "1.glb"}).status, Done);
            const ToolRun again = runTool({"repair", folder / "1.glb", "-o", folder / "2.glb"});
            EXPECT_NE(again.err.find("nothing singular"), std::string::npos) << again.err;
        }
}

} // namespace
