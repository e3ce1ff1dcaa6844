// Cuts and sews of real meshes, as other programs read them: an OBJ line by line but for its UVs, a
// GLB by another reader, corner by corner.

#include "uvtool/SlotValuesFor.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"
#include "uvtool/formats/GltfCorners.h"

#include "document/Format.h"

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

/// An OBJ without what says anything about UVs.
std::vector<std::string> linesButUVs(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::istringstream text(bytesOf(file));
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("vt "))
            continue;
        lines.emplace_back();
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            const std::size_t vt = line.starts_with("f ") ? word.find('/') : std::string::npos;
            const std::size_t vn = word.find('/', vt + 1);
            lines.back() += vt == std::string::npos ? word : word.substr(0, vt);
            lines.back() +=
                vt == std::string::npos || vn == std::string::npos ? " " : word.substr(vn) + " ";
        }
    }
    return lines;
}

/// The bytes of all attributes but the first UVs, at the corners of all triangles of a GLB.
std::vector<std::vector<std::string>> cornersButUVs(const std::filesystem::path& file)
{
    const tinygltf::Model model = gltfCorners::load(file);
    std::vector<std::vector<std::string>> corners;
    for (const tinygltf::Mesh& mesh : model.meshes)
        for (const tinygltf::Primitive& primitive : mesh.primitives)
            for (const auto& [name, accessor] : primitive.attributes)
                if (name != "TEXCOORD_0") {
                    corners.push_back({name});
                    for (std::string& bytes : gltfCorners::atCorners(model, primitive, accessor))
                        corners.back().push_back(std::move(bytes));
                }
    return corners;
}

void expectSameButUVs(const std::filesystem::path& file, const std::filesystem::path& original)
{
    if (file.extension() == ".obj")
        EXPECT_TRUE(linesButUVs(file) == linesButUVs(original)) << file;
    else
        EXPECT_TRUE(cornersButUVs(file) == cornersButUVs(original)) << file;
}

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
