// Repairs of real meshes, as they are read again.

#include "uvtool/MeshFiles.h"
#include "uvtool/ObjTopology.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "document/Format.h"
#include "document/SlotWriter.h"
#include "document/Vec3Math.h"

#include <cmath>

#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using namespace uvtool::test;

/// Those of triangles with an area that is worth the name.
std::vector<Vec3d> properCornersIn(const std::filesystem::path& file)
{
    std::vector<Vec3d> proper;
    const std::vector<Vec3d> corners = cornersIn(file);
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        const Vec3d u = difference(corners[i + 1], corners[i]);
        const Vec3d v = difference(corners[i + 2], corners[i]);
        const Vec3d normal = cross(u, v);
        if (dot(normal, normal) > 1e-10 * dot(u, u) * dot(v, v))
            proper.insert(proper.end(), {corners[i], corners[i + 1], corners[i + 2]});
    }
    return proper;
}

TEST(RepairOfMeshes, LeavesNothingSingularAndMovesNothing)
{
    const auto meshes = objMeshes();
    if (meshes.empty())
        GTEST_SKIP() << KYUV_MESHES << " is absent";
    for (const std::filesystem::path& in : meshes)
        for (const char* const name : {"out.obj", "out.glb"}) {
            SCOPED_TRACE(in.string() + " to " + name);
            const TempFolder folder;
            ASSERT_EQ(runTool({"repair", in, "-o", folder / name}).status, Done);
            EXPECT_TRUE(name == std::string("out.glb") ||
                        properCornersIn(folder / name) == properCornersIn(in));
            const ToolRun again = runTool({"repair", folder / name, "-o", folder / "2.obj"});
            EXPECT_NE(again.err.find("nothing singular"), std::string::npos) << again.err;
            EXPECT_EQ(again.err.find("removed"), std::string::npos) << again.err;
        }
}

/// The side of a box that a triangle faces, 0 to 5.
std::uint32_t sideOf(const Vec3d& a, const Vec3d& b, const Vec3d& c)
{
    std::uint32_t side = 0;
    double largest = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        const std::size_t u = (k + 1) % 3;
        const std::size_t v = (k + 2) % 3;
        const double normal = (b[u] - a[u]) * (c[v] - a[v]) - (b[v] - a[v]) * (c[u] - a[u]);
        if (std::abs(normal) > largest) {
            largest = std::abs(normal);
            side = static_cast<std::uint32_t>(normal < 0 ? k + 3 : k);
        }
    }
    return side;
}

/// A copy with the UVs of a texture thrown on from six sides.
void writeBoxMapped(const std::filesystem::path& from, const std::filesystem::path& to)
{
    Document document = readDocument(from);
    for (DocumentGeometry& geometry : document.geometries) {
        SlotValues uvs;
        for (const Vec3d& p : geometry.positions.values)
            for (std::size_t side = 0; side < 6; ++side)
                uvs.values.push_back({static_cast<float>(p[(side + 1) % 3]) + float(side),
                                      static_cast<float>(p[(side + 2) % 3])});
        const std::vector<std::uint32_t>& corners = geometry.triangles;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const auto at = [&](std::size_t k) {
                return geometry.positions.at(corners[i / 3 * 3 + k]);
            };
            uvs.ofTriangleCorner.push_back(6 * geometry.positions.ofCorner[corners[i]] +
                                           sideOf(at(0), at(1), at(2)));
        }
        writeSlot(geometry, 0, uvs);
    }
    writeDocument(document, to);
}

TEST(RepairOfMeshes, PartsChartsThatTouchInAPoint)
{
    const std::filesystem::path meshes = KYUV_MESHES;
    if (!std::filesystem::exists(meshes))
        GTEST_SKIP() << meshes << " is absent";
    for (const char* const name :
         {"bunny.obj", "pizza_scan.obj", "race_car.obj", "sword_quads.obj"})
    {
        SCOPED_TRACE(name);
        const TempFolder folder;
        writeBoxMapped(meshes / name, folder / "in.obj");
        ASSERT_EQ(runTool({"repair", folder / "in.obj", "-o", folder / "out.obj"}).status, Done);
        const ObjTopology before(bytesOf(folder / "in.obj"));
        const ObjTopology after(bytesOf(folder / "out.obj"));
        EXPECT_GT(before.singularCount(true), 0U);
        EXPECT_EQ(after.singularCount(false) + after.singularCount(true), 0U);
        EXPECT_TRUE(after.cornerValues() == before.cornerValues());
        ASSERT_EQ(runTool({"repair", folder / "out.obj", "-o", folder / "2.obj"}).status, Done);
        EXPECT_TRUE(bytesOf(folder / "2.obj") == bytesOf(folder / "out.obj"));
    }
}

} // namespace
