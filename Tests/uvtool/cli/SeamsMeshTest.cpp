// Cuts and sews of real meshes, as other programs read them.

#include "uvtool/SameButUVs.h"
#include "uvtool/SlotValuesFor.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

/// Runs a command and expects `islands` to find in its file what it reports.
void expectReportIsTrue(const std::string& command, const std::filesystem::path& in,
                        const std::filesystem::path& out, std::vector<std::string> options)
{
    options.insert(options.begin(), {command, in, "-o", out, "--json", "--quiet", "--undo-check"});
    const ToolRun run = runTool(options);
    ASSERT_EQ(run.status, Done) << run.err;
    const nlohmann::json report = run.json()["geometries"];
    const nlohmann::json found =
        runTool({"islands", out, "--json", "--quiet", options.back()}).json()["geometries"];
    ASSERT_EQ(report.size(), found.size());
    for (std::size_t g = 0; g < found.size(); ++g)
        for (const char* const key : {"vertices", "compactVertices", "islands", "borderEdges"})
            EXPECT_EQ(report[g]["after"][key], found[g][key]) << command << " " << key;
}

TEST(SeamsOfMeshes, ChangeNothingButUVsAndAreAsReported)
{
    const std::filesystem::path meshes = KYUV_MESHES;
    if (!std::filesystem::exists(meshes))
        GTEST_SKIP() << meshes << " is absent";
    for (const char* const name : {"spot", "milk_truck", "race_car", "sword_quads", "housing"})
        for (const char* const extension : {".obj", ".glb"}) {
            SCOPED_TRACE(std::string(name) + extension);
            const TempFolder folder;
            const auto file = [&](const char* stem) {
                return folder / (std::string(stem) + extension);
            };
            Document document = readDocument(meshes / (std::string(name) + ".obj"));
            if (extension == std::string(".glb"))
                for (DocumentGeometry& geometry : document.geometries)
                    writeSlot(geometry, 1, valueForEachPosition(geometry));
            writeDocument(document, file("in"));
            expectReportIsTrue("cut", file("in"), file("cut"), {"--angle", "40", "--shell"});
            expectSameButUVs(file("cut"), file("in"));
            expectReportIsTrue("sew", file("cut"), file("sewn"), {"--all", "--shell"});
            expectSameButUVs(file("sewn"), file("in"));
        }
}

} // namespace
