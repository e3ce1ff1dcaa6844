#include "LayoutChecks.h"
#include "PackChecks.h"
#include "PackRun.h"
#include "SeamChecks.h"
#include "SolverSession.h"
#include "Surfaces.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/FlatStart.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>
#include <sstream>
#include <string>

using namespace unfold3d;
using patchwork::Layout;

namespace
{

/// The triangles of an OBJ file, polygons as fans, with a vertex for each pair of position and UV.
/// Polygons without UVs are left out, unless the whole file is without.
struct ObjSurface
{
    IslandMesh mesh;
    std::vector<Vec2> uvs;
};

ObjSurface readObj(const std::filesystem::path& path)
{
    ObjSurface surface;
    std::ifstream file(path);
    std::vector<Vec3> points;
    std::vector<Vec2> places{{0.0, 0.0}};
    std::map<std::pair<int, int>, int> vertexOf;
    for (std::string row; std::getline(file, row);) {
        std::istringstream words(row);
        std::string word;
        words >> word;
        if (word == "v") {
            Vec3& p = points.emplace_back();
            words >> p.x >> p.y >> p.z;
        } else if (word == "vt") {
            Vec2& p = places.emplace_back();
            words >> p.x >> p.y;
        } else if (word == "f") {
            std::vector<int> corners;
            while (words >> word) {
                int point = 0;
                int uv = 0;
                std::sscanf(word.c_str(), "%d/%d", &point, &uv);
                if (uv == 0 && places.size() > 1)
                    break;
                const auto [at, isNew] =
                    vertexOf.try_emplace({point, uv}, surface.mesh.vertexCount());
                if (isNew) {
                    surface.mesh.positions.push_back(
                        points.at(static_cast<std::size_t>(point - 1)));
                    surface.uvs.push_back(places.at(static_cast<std::size_t>(uv)));
                }
                corners.push_back(at->second);
            }
            for (std::size_t i = 2; i < corners.size(); ++i)
                surface.mesh.triangles.push_back({corners[0], corners[i - 1], corners[i]});
        }
    }
    return surface;
}

/// Tests on meshes that stand in a folder.
class RealMeshes : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(folder))
            GTEST_SKIP() << "no meshes at " << folder;
    }
    IslandMesh readSurface(const char* file) const
    {
        return surfaces::normalised(readObj(folder / file).mesh);
    }
    static FlattenResult flattened(const IslandMesh& mesh, const FlattenOptions& options = {})
    {
        const RunControl control;
        return flatten(mesh, flatStart(mesh, control).uv, options, control, {});
    }

    const std::filesystem::path folder = KYUV_MESHES;
};

/// No triangle is flipped and no border crosses another.
void expectSound(const IslandMesh& mesh, const FlattenResult& result)
{
    EXPECT_EQ(layout::countFlips(mesh.triangles, result.uv), 0);
    EXPECT_EQ(layout::countCrossings(mesh.triangles, result.uv), 0);
}

// The converged energies of free layouts, as other methods find them too.
TEST_F(RealMeshes, ReachesTheKnownMinimaWithAndWithoutCrossings)
{
    struct Case
    {
        const char* file;
        double minimum;
    };
    for (const Case& c : {Case{"cut/spot_disk.obj", 4.2347}, Case{"cut/bunny_disk.obj", 4.1188}}) {
        SCOPED_TRACE(c.file);
        const IslandMesh mesh = readSurface(c.file);
        FlattenOptions options;
        options.preventBorderCrossings = false;
        const FlattenResult free = flattened(mesh, options);
        EXPECT_LT(free.report.energy, 1.003 * c.minimum);
        EXPECT_EQ(layout::countFlips(mesh.triangles, free.uv), 0);
        options.iterations = -1;
        EXPECT_NEAR(flattened(mesh, options).report.energy, c.minimum, 1e-4);

        const FlattenResult apart = flattened(mesh);
        EXPECT_LT(apart.report.energy, 1.01 * c.minimum);
        expectSound(mesh, apart);
    }
}

TEST_F(RealMeshes, APlanarMeshWithADeeplyFingeredBorderComesBackUndistorted)
{
    const IslandMesh mesh = readSurface("hele_shaw.obj");
    const FlattenResult result = flattened(mesh);
    expectSound(mesh, result);
    for (const Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto a = static_cast<std::size_t>(t[i]);
            const auto b = static_cast<std::size_t>(t[(i + 1) % 3]);
            const double rest = length(mesh.positions[b] - mesh.positions[a]);
            ASSERT_NEAR(length(result.uv[b] - result.uv[a]), rest, 1e-3 * rest + 1e-6);
        }
}

// A closed scan that is to open over the holes of its base only: the heaviest distortion.
TEST_F(RealMeshes, AWholeScanOpensOverASmallHole)
{
    const IslandMesh mesh = readSurface("bunny.obj");
    const FlattenResult result = flattened(mesh);
    expectSound(mesh, result);
    EXPECT_TRUE(result.report.converged);
}

/// A layout whose patches are the triangles that share vertices.
Layout readLayout(const std::filesystem::path& path)
{
    const ObjSurface surface = readObj(path);
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

/// [patch] triangles that turn against the larger area of their patch.
std::vector<int> flipsOfPatches(const Layout& layout, const std::vector<Vec2>& uvs)
{
    std::vector<double> area(static_cast<std::size_t>(layout.patchCount), 0.0);
    std::vector<int> flips(area.size(), 0);
    const auto visit = [&](const auto& use) {
        for (std::size_t t = 0; t < layout.mesh.triangles.size(); ++t) {
            const auto& [a, b, c] = layout.mesh.triangles[t];
            use(static_cast<std::size_t>(layout.patchOfTriangle[t]),
                uvs[static_cast<std::size_t>(a)], uvs[static_cast<std::size_t>(b)],
                uvs[static_cast<std::size_t>(c)]);
        }
    };
    visit([&](std::size_t patch, Vec2 a, Vec2 b, Vec2 c) { area[patch] += doubleArea(a, b, c); });
    visit([&](std::size_t patch, Vec2 a, Vec2 b, Vec2 c) {
        flips[patch] += (area[patch] < 0.0 ? -1 : 1) * orient2d(a, b, c) <= 0;
    });
    return flips;
}

TEST_F(RealMeshes, RelaxingUndoesFlips)
{
    struct Case
    {
        const char* file;
        bool isWarned; ///< of islands that can't be laid flat, which keep their flips
    };
    for (const Case& c :
         {Case{"hele_shaw.obj", false}, Case{"milk_truck.obj", false},
          Case{"pizza_scan.obj", false}, Case{"spot.obj", false}, Case{"race_car.obj", true}})
    {
        SCOPED_TRACE(c.file);
        const Layout layout = readLayout(folder / c.file);
        SolverSession session(layout.mesh, layout.uvs);
        const std::vector<int> before = flipsOfPatches(layout, session.exportUVs());
        session.selectAllVertices();
        session.optimize({});
        ASSERT_FALSE(session.hasError()) << session.error();
        EXPECT_EQ(NU3D::CUnfold3DAPI::HasWarning(session.last()), c.isWarned) << session.warning();
        const std::vector<int> after = flipsOfPatches(layout, session.exportUVs());
        for (std::size_t patch = 0; patch < after.size(); ++patch)
            EXPECT_LE(after[patch], before[patch]);
        EXPECT_EQ(std::accumulate(after.begin(), after.end(), 0) > 0, c.isWarned);
    }
}

TEST_F(RealMeshes, PackedIslandsKeepTheirGapsAndCoverTheSquare)
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
        const std::vector<Vec2> uvs = packed::asFloats(run.exportUVs());
        EXPECT_GE(packed::leastGap(layout, uvs), keys.spacing);
        const double far = 1.0 - keys.margin;
        EXPECT_TRUE(
            (unfold3d::Box2{{keys.margin, keys.margin}, {far, far}}).contains(packed::bounds(uvs)));
        EXPECT_GE(packed::wholeArea(layout, uvs), c.covers);
    }
}

/// One vertex for each place.
IslandMesh welded(const IslandMesh& mesh)
{
    IslandMesh result;
    std::map<std::array<double, 3>, int> vertexAt;
    for (Triangle t : mesh.triangles) {
        for (int& v : t) {
            const Vec3 p = mesh.positions[static_cast<std::size_t>(v)];
            const auto [at, isNew] = vertexAt.try_emplace({p.x, p.y, p.z}, result.vertexCount());
            if (isNew)
                result.positions.push_back(p);
            v = at->second;
        }
        result.triangles.push_back(t);
    }
    return result;
}

TEST_F(RealMeshes, BodiesNeedFewSeams)
{
    for (const char* file : {"spot.obj", "bunny.obj"}) {
        SCOPED_TRACE(file);
        const IslandMesh mesh = welded(readSurface(file));
        const seams::CutMesh cut(mesh, seams::proposed(mesh, {{"#Organic table"}}));
        EXPECT_LE(cut.patches.size(), 5U);
        EXPECT_LE(cut.seamLength, 5.0);
        EXPECT_LE(seams::worstEnergy(cut), 4.2);
        for (const seams::Patch& patch : cut.patches)
            EXPECT_EQ(std::pair(patch.handles, patch.borders), std::pair(0, 1));
    }
}

} // namespace
