#include "SeamChecks.h"
#include "Solids.h"
#include "Surfaces.h"

#include "Unfold3D/seams/MirrorPlane.h"
#include "Unfold3D/seams/SurfaceExtent.h"
#include "Unfold3D/seams/Visibility.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <optional>
#include <random>
#include <set>

using namespace unfold3d;
using seams::CutMesh;
using seams::Edges;

namespace
{

Edges organic(const IslandMesh& mesh, double amount = 0.0, bool pipes = false)
{
    return seams::proposed(mesh, {{"#Organic table"},
                                  {"#Organic.SegAmount double", amount},
                                  {"#Organic.UsePipesCutter bool", pipes}});
}

/// Rounds a surface off: each vertex goes to the middle of those of its triangles.
IslandMesh smoothed(IslandMesh mesh)
{
    for (int round = 0; round < 3; ++round) {
        std::vector<Vec3> sums(mesh.positions.size());
        std::vector<double> counts(mesh.positions.size(), 0.0);
        for (const Triangle& t : mesh.triangles)
            for (const int v : t) {
                for (const int w : t)
                    sums[static_cast<std::size_t>(v)] = sums[static_cast<std::size_t>(v)] +
                                                        mesh.positions[static_cast<std::size_t>(w)];
                counts[static_cast<std::size_t>(v)] += 3.0;
            }
        for (std::size_t v = 0; v < sums.size(); ++v)
            mesh.positions[v] = (1.0 / counts[v]) * sums[v];
    }
    return mesh;
}

/// A trunk on four legs, with a head.
IslandMesh animal()
{
    return smoothed(solids::cubes(16, 6, 12, [](int i, int j, int k) {
        const bool isTrunk = i < 12 && k >= 5 && k < 10;
        const bool isLeg = i < 12 && i % 9 < 3 && j % 4 < 2 && k < 5;
        const bool isHead = i >= 10 && j >= 1 && j < 5 && k >= 8;
        return isTrunk || isLeg || isHead;
    }));
}

IslandMesh doubleTorus()
{
    return smoothed(solids::cubes(
        15, 9, 3, [](int i, int j, int) { return j < 3 || j > 5 || i % 6 < 3 || i % 6 > 5; }));
}

/// A ball with a long tube that ends in a flat cap.
IslandMesh ballWithTube()
{
    std::vector<std::pair<double, double>> line;
    for (int ring = 0; ring < 20; ++ring) {
        const double angle = std::numbers::pi * ring / 22.0;
        line.emplace_back(std::sin(angle), -std::cos(angle));
    }
    for (int ring = 0; ring <= 30; ++ring)
        line.emplace_back(0.3, 1.0 + 0.1 * ring);
    line.emplace_back(0.15, 4.0);
    line.emplace_back(0.0, 4.0);
    return solids::turned(line, 24);
}

IslandMesh halfSphere()
{
    IslandMesh mesh = solids::sphere(24);
    std::erase_if(mesh.triangles, [&](const Triangle& t) {
        return std::any_of(t.begin(), t.end(), [&](int v) {
            return mesh.positions[static_cast<std::size_t>(v)].z < -0.01;
        });
    });
    return mesh;
}

struct Body
{
    const char* name;
    IslandMesh mesh;
    double mostLength; ///< of its seams, in diagonals
    double mostEnergy;
};

std::vector<Body> bodies()
{
    return {{"a sphere", solids::sphere(24), 2.2, 4.4},
            {"an animal", animal(), 4.0, 4.3},
            {"a torus", surfaces::torus(32, 16, 0), 3.5, 4.3},
            {"a double torus", doubleTorus(), 5.0, 4.3},
            {"a ball with a tube", ballWithTube(), 2.5, 4.3},
            {"half a sphere", halfSphere(), 1.0, 4.3},
            {"a tube", surfaces::tube(16, 12, 1.0, 0.5), 1.0, 4.001}};
}

void expectDisks(const CutMesh& cut)
{
    for (const seams::Patch& patch : cut.patches) {
        EXPECT_EQ(patch.handles, 0);
        EXPECT_EQ(patch.borders, 1);
    }
}

TEST(OrganicSeams, MakeOneDiskOfABodyThatLiesFlatWithLittleStrain)
{
    for (const Body& body : bodies()) {
        SCOPED_TRACE(body.name);
        const CutMesh cut(body.mesh, organic(body.mesh));
        expectDisks(cut);
        EXPECT_EQ(cut.patches.size(), 1U);
        EXPECT_LE(cut.seamLength, body.mostLength);
        EXPECT_LE(seams::worstEnergy(cut), body.mostEnergy);
    }
    EXPECT_TRUE(organic(surfaces::sheet(6, 5)).empty());
}

/// The plane of symmetry of a body that stands askew.
std::optional<Vec3> mirrorPlaneOf(IslandMesh mesh)
{
    for (Vec3& p : mesh.positions)
        p = {0.6 * p.x - 0.8 * p.y, 0.8 * p.x + 0.6 * p.y, p.z};
    std::vector<int> all(mesh.triangles.size());
    std::iota(all.begin(), all.end(), 0);
    const Vec3 middle = extentOf(mesh.positions, mesh.triangles, all).middle;
    for (Vec3& p : mesh.positions)
        p = p - middle;
    all.resize(mesh.positions.size());
    return mirrorPlane(mesh.positions, mesh.triangles, all);
}

TEST(OrganicSeams, KnowThePlaneOfSymmetryOfABody)
{
    const std::optional<Vec3> normal = mirrorPlaneOf(animal());
    ASSERT_TRUE(normal);
    EXPECT_NEAR(std::abs(dot(*normal, {-0.8, 0.6, 0.0})), 1.0, 1e-3);
    EXPECT_FALSE(mirrorPlaneOf(solids::sphere(24))) << "it has too many";
    const auto hasThreeLegs = [](int i, int j, int k) {
        return (i < 12 && k >= 5) || (i % 9 < 3 && j % 4 < 2 && (i < 4 || j < 2));
    };
    EXPECT_FALSE(mirrorPlaneOf(solids::cubes(12, 6, 10, hasThreeLegs)));
}

TEST(OrganicSeams, OnlyGrowWithTheAmount)
{
    for (const Body& body : bodies()) {
        SCOPED_TRACE(body.name);
        Edges before;
        for (const double amount : {0.0, 0.4, 1.0}) {
            const Edges edges = organic(body.mesh, amount, true);
            expectDisks(CutMesh(body.mesh, edges));
            EXPECT_TRUE(std::includes(edges.begin(), edges.end(), before.begin(), before.end()));
            before = edges;
        }
    }
    const IslandMesh body = animal();
    EXPECT_GT(CutMesh(body, organic(body, 1.0)).seamLength,
              1.2 * CutMesh(body, organic(body, 0.0)).seamLength);
    EXPECT_LT(seams::worstEnergy(CutMesh(body, organic(body, 1.0))),
              seams::worstEnergy(CutMesh(body, organic(body, 0.0))));
}

TEST(OrganicSeams, CutTubesFromTheBodyAndTheirCapsFromThem)
{
    const IslandMesh mesh = ballWithTube();
    CutMesh cut(mesh, organic(mesh, 0.0, true));
    expectDisks(cut);
    ASSERT_EQ(cut.patches.size(), 3U);
    std::sort(cut.patches.begin(), cut.patches.end(),
              [](const auto& a, const auto& b) { return a.area > b.area; });
    EXPECT_NEAR(cut.patches[0].area, 4.0 * std::numbers::pi, 0.8);
    EXPECT_NEAR(cut.patches[1].area, 0.6 * std::numbers::pi * 3.0, 0.6);
    EXPECT_NEAR(cut.patches[2].area, 0.09 * std::numbers::pi, 0.3);
}

TEST(OrganicSeams, CutWhatWouldLieOverItself)
{
    for (const double turns : {1.4, 2.6}) {
        const IslandMesh ramp = surfaces::cutCone(turns, 60, 4);
        const CutMesh cut(ramp, organic(ramp));
        expectDisks(cut);
        EXPECT_GE(static_cast<double>(cut.patches.size()), turns);
        EXPECT_LE(cut.patches.size(), 6U);
        EXPECT_LE(seams::worstEnergy(cut), 4.01);
    }
}

TEST(OrganicSeams, HideWhereFewLook)
{
    const IslandMesh mesh = animal();
    std::vector<int> allVertices(mesh.positions.size());
    std::iota(allVertices.begin(), allVertices.end(), 0);
    const std::vector<double> seen =
        vertexVisibility(mesh.positions, mesh.triangles, allVertices, {});
    double onSurface = 0.0;
    double onSeams = 0.0;
    for (const double s : seen)
        onSurface += s / static_cast<double>(seen.size());
    const Edges edges = organic(mesh);
    for (const auto& [a, b] : edges)
        onSeams += 0.5 * (seen[static_cast<std::size_t>(a)] + seen[static_cast<std::size_t>(b)]) /
                   static_cast<double>(edges.size());
    EXPECT_LT(onSeams, onSurface - 0.05);
}

TEST(OrganicSeams, DependNeitherOnTheSizeNorOnTheRun)
{
    for (const Body& body : bodies()) {
        SCOPED_TRACE(body.name);
        const Edges edges = organic(body.mesh, 0.5);
        EXPECT_EQ(organic(body.mesh, 0.5), edges);
        for (const double scale : {0.001, 1000.0 / 3.0}) {
            IslandMesh scaled = body.mesh;
            for (Vec3& p : scaled.positions)
                p = {static_cast<float>(scale * (p.x + 7.0)), static_cast<float>(scale * p.y),
                     static_cast<float>(scale * p.z)};
            EXPECT_EQ(organic(scaled, 0.5), edges);
        }
    }
}

// Edges of many triangles, copies, bad corners, many parts, needles and triangles on one point.
TEST(OrganicSeams, OpenWhateverComesIn)
{
    std::mt19937 random(7);
    const auto below = [&](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        IslandMesh soup;
        const int vertexCount = 3 + below(round % 3 == 0 ? 8 : 60);
        for (int v = 0; v < vertexCount; ++v)
            soup.positions.push_back({1.0 * below(4), 1.0 * below(4), below(2) * 1e-9});
        IslandMesh sound = soup;
        std::set<std::set<int>> known;
        for (int t = 1 + below(60); t > 0; --t) {
            const Triangle triangle{below(vertexCount), below(vertexCount), below(vertexCount)};
            const std::set<int> corners(triangle.begin(), triangle.end());
            soup.triangles.push_back(triangle);
            if (corners.size() == 3 && known.insert(corners).second)
                sound.triangles.push_back(triangle);
        }
        const CutMesh cut(sound, organic(soup, 0.5 * below(3), below(2) == 1));
        for (const seams::Patch& patch : cut.patches) {
            EXPECT_EQ(patch.handles, 0);
            EXPECT_GE(patch.borders, 1);
        }
    }
}

// A cut along one edge would open nothing.
TEST(OrganicSeams, OpenTheSmallestPartsByTwoEdgesAtLeast)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> coordinate(0.0, 1.0);
    constexpr int partCount = 20;
    IslandMesh parts;
    for (int first = 0; first < 4 * partCount; first += 4) {
        for (int i = 0; i < 4; ++i)
            parts.positions.push_back(
                {coordinate(random), coordinate(random), coordinate(random) + first});
        for (const auto& [a, b, c] : surfaces::tetrahedron().triangles)
            parts.triangles.push_back({a + first, b + first, c + first});
    }
    std::vector<int> seamsOf(partCount, 0);
    for (const auto& [low, high] : organic(parts))
        ++seamsOf[static_cast<std::size_t>(low / 4)];
    EXPECT_THAT(seamsOf, testing::Each(testing::Ge(2)));
}

} // namespace
