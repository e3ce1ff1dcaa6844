#include "ObjSurface.h"
#include "PackChecks.h"
#include "PackRun.h"

#include "Unfold3D/base/DisjointSets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

using namespace patchwork;

namespace
{

/// A layout whose patches are the triangles that share vertices.
Layout readLayout(const std::filesystem::path& path)
{
    const ObjSurface surface(path);
    Layout layout;
    layout.mesh = surface.mesh;
    layout.uvs = surface.uvs;
    unfold3d::DisjointSets sets(layout.mesh.vertexCount());
    for (const Triangle& t : layout.mesh.triangles) {
        sets.join(t[0], t[1]);
        sets.join(t[0], t[2]);
    }
    std::map<int, int> patchOfSet;
    for (int v = 0; v < layout.mesh.vertexCount(); ++v) {
        const auto [at, isNew] = patchOfSet.try_emplace(sets.find(v), layout.patchCount);
        layout.patchCount += isNew ? 1 : 0;
        layout.patchOfVertex.push_back(at->second);
    }
    for (const Triangle& t : layout.mesh.triangles)
        layout.patchOfTriangle.push_back(layout.patchOfVertex[static_cast<std::size_t>(t[0])]);
    return layout;
}

class PackMesh : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(folder))
            GTEST_SKIP() << "no meshes at " << folder;
    }

    const std::filesystem::path folder = KYUV_MESHES;
};

TEST_F(PackMesh, RealIslandsKeepTheirGapsAndCoverTheSquare)
{
    struct Case
    {
        const char* file;
        int islands;
        int rotationMode;
        int islandScaling;
        double covers; ///< share of the square, at least
    };
    const Case cases[] = {
        {"cut/rects120.obj", 120, 0, 0, 0.90}, {"spot.obj", 13, 4, 1, 0.68},
        {"milk_truck.obj", 138, 4, 1, 0.68},   {"housing.obj", 324, 4, 1, 0.74},
        {"pizza_scan.obj", 4740, 4, 1, 0.60},  {"open_shell.obj", 99, 4, 1, 0.85},
        {"hele_shaw.obj", 1, 0, 0, 0.30},      {"race_car.obj", 146, 4, 1, 0.5},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const Layout layout = readLayout(folder / c.file);
        EXPECT_EQ(layout.patchCount, c.islands);
        PackKeys keys;
        keys.resolution = 1024;
        keys.rotationMode = c.rotationMode;
        keys.islandScaling = c.islandScaling;
        keys.spacing = 2.0 / 1024.0;
        keys.margin = 1.0 / 1024.0;
        PackRun run(layout);
        run.pack(keys);
        ASSERT_FALSE(run.hasError()) << run.error();
        const std::vector<Vec2> uvs = packed::asFloats(run.uvs());
        EXPECT_GE(packed::leastGap(layout, uvs), keys.spacing);
        const double far = 1.0 - keys.margin;
        EXPECT_TRUE(
            (unfold3d::Box2{{keys.margin, keys.margin}, {far, far}}).contains(packed::bounds(uvs)));
        EXPECT_GE(packed::wholeArea(layout, uvs), c.covers);
    }
}

} // namespace
