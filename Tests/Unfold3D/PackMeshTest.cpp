#include "PackChecks.h"
#include "PackRun.h"

#include "Unfold3D/base/DisjointSets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

using namespace patchwork;
using unfold3d::Box2;

namespace
{

/// Joins the triangles that share a vertex to patches.
void findPatches(Layout& layout)
{
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
}

/// The triangles of an OBJ file, polygons as fans; a vertex for each pair of position and UV.
Layout readLayout(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::vector<unfold3d::Vec3> points;
    std::vector<Vec2> uvs;
    std::map<std::pair<int, int>, int> vertexOf;
    Layout layout;
    for (std::string row; std::getline(file, row);) {
        std::istringstream words(row);
        std::string word;
        words >> word;
        if (word == "v") {
            unfold3d::Vec3& p = points.emplace_back();
            words >> p.x >> p.y >> p.z;
        } else if (word == "vt") {
            Vec2& p = uvs.emplace_back();
            words >> p.x >> p.y;
        } else if (word == "f") {
            std::vector<int> corners;
            while (words >> word) {
                int point = 0;
                int uv = 0;
                if (std::sscanf(word.c_str(), "%d/%d", &point, &uv) != 2)
                    break; // a polygon without UVs
                --point;
                --uv;
                const auto [at, isNew] =
                    vertexOf.try_emplace({point, uv}, layout.mesh.vertexCount());
                if (isNew) {
                    layout.mesh.positions.push_back(points.at(static_cast<std::size_t>(point)));
                    layout.uvs.push_back(uvs.at(static_cast<std::size_t>(uv)));
                }
                corners.push_back(at->second);
            }
            for (std::size_t i = 2; i < corners.size(); ++i)
                layout.mesh.triangles.push_back({corners[0], corners[i - 1], corners[i]});
        }
    }
    findPatches(layout);
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
        const Box2 bounds = packed::bounds(uvs);
        EXPECT_GE(std::min(bounds.low.x, bounds.low.y), keys.margin);
        EXPECT_LE(std::max(bounds.high.x, bounds.high.y), 1.0 - keys.margin);
        EXPECT_GE(packed::wholeArea(layout, uvs), c.covers);
    }
}

} // namespace
