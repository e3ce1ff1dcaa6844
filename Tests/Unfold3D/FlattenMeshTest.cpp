#include "LayoutChecks.h"
#include "ObjSurface.h"
#include "Surfaces.h"

#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/FlatStart.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace unfold3d;

namespace
{

IslandMesh readSurface(const std::filesystem::path& path)
{
    return surfaces::normalised(ObjSurface(path).mesh);
}

class FlattenMesh : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(folder))
            GTEST_SKIP() << "no meshes at " << folder;
    }
    static FlattenResult flattened(const IslandMesh& mesh, const FlattenOptions& options)
    {
        const RunControl control;
        return flatten(mesh, flatStart(mesh, control).uv, options, control, {});
    }

    const std::filesystem::path folder = KYUV_MESHES;
};

// The converged energies of free layouts, as other methods find them too.
TEST_F(FlattenMesh, ReachesTheKnownMinimaWithAndWithoutCrossings)
{
    struct Case
    {
        const char* file;
        double minimum;
    };
    for (const Case& c : {Case{"cut/spot_disk.obj", 4.2347}, Case{"cut/bunny_disk.obj", 4.1188}}) {
        SCOPED_TRACE(c.file);
        const IslandMesh mesh = readSurface(folder / c.file);
        FlattenOptions options;
        options.preventBorderCrossings = false;
        const FlattenResult free = flattened(mesh, options);
        EXPECT_LT(free.report.energy, 1.003 * c.minimum);
        EXPECT_EQ(layout::countFlips(mesh.triangles, free.uv), 0);
        options.iterations = -1;
        EXPECT_NEAR(flattened(mesh, options).report.energy, c.minimum, 1e-4);

        const FlattenResult apart = flattened(mesh, {});
        EXPECT_LT(apart.report.energy, 1.01 * c.minimum);
        EXPECT_EQ(layout::countFlips(mesh.triangles, apart.uv), 0);
        EXPECT_EQ(layout::countCrossings(mesh.triangles, apart.uv), 0);
    }
}

TEST_F(FlattenMesh, APlanarMeshWithADeeplyFingeredBorderComesBackUndistorted)
{
    const IslandMesh mesh = readSurface(folder / "hele_shaw.obj");
    const FlattenResult result = flattened(mesh, {});
    EXPECT_EQ(layout::countFlips(mesh.triangles, result.uv), 0);
    EXPECT_EQ(layout::countCrossings(mesh.triangles, result.uv), 0);
    for (const Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto a = static_cast<std::size_t>(t[i]);
            const auto b = static_cast<std::size_t>(t[(i + 1) % 3]);
            const double rest = length(mesh.positions[b] - mesh.positions[a]);
            ASSERT_NEAR(length(result.uv[b] - result.uv[a]), rest, 1e-3 * rest + 1e-6);
        }
}

// A closed scan that is to open over the holes of its base only: the heaviest distortion.
TEST_F(FlattenMesh, AWholeScanOpensOverASmallHole)
{
    const IslandMesh mesh = readSurface(folder / "bunny.obj");
    const FlattenResult result = flattened(mesh, {});
    EXPECT_EQ(layout::countFlips(mesh.triangles, result.uv), 0);
    EXPECT_EQ(layout::countCrossings(mesh.triangles, result.uv), 0);
    EXPECT_TRUE(result.report.converged);
}

} // namespace
