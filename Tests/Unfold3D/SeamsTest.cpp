#include "SeamChecks.h"
#include "Solids.h"
#include "Surfaces.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <set>

using namespace unfold3d;
using seams::CutMesh;
using seams::Edges;

namespace
{

Edges manufactured(const IslandMesh& mesh, double angle = 89.0, double minRatio = 0.0)
{
    return seams::proposed(mesh, {{"#Manufactured table"},
                                  {"#Manufactured.Angle double", angle},
                                  {"#Manufactured.MinPatchRatio double", minRatio}});
}

Edges forBaking(const IslandMesh& mesh, double angle = 89.0, int minTriangles = 0)
{
    return seams::proposed(mesh, {{"#Baking table"},
                                  {"#Baking.Angle double", angle},
                                  {"#Baking.MinPatchNumPoly int", minTriangles}});
}

/// A patch has the connections of a flat sheet, holes allowed.
void expectOpen(const CutMesh& cut)
{
    for (const seams::Patch& patch : cut.patches) {
        EXPECT_EQ(patch.handles, 0);
        EXPECT_GE(patch.borders, 1);
    }
}

IslandMesh plateWithTwoHoles()
{
    return solids::cubes(7, 3, 1, [](int i, int j, int) { return j != 1 || (i != 1 && i != 4); });
}
IslandMesh angleBar()
{
    return solids::cubes(3, 4, 3, [](int i, int, int k) { return i == 0 || k == 0; });
}
IslandMesh cone()
{
    return solids::turned({{0.0, 0.0}, {1.0, 0.0}, {0.5, 1.5}, {0.0, 3.0}}, 24);
}

struct Solid
{
    const char* name;
    IslandMesh mesh;
    double angle;
    int leastPatches;
    int mostPatches;
    double mostEnergy;
};

std::vector<Solid> solidsOfAllKinds()
{
    return {
        {"a cube", solids::box(2, 2, 2), 89.0, 6, 6, 4.001},
        {"a plate with two holes", plateWithTwoHoles(), 89.0, 14, 14, 4.001},
        {"an angle bar", angleBar(), 89.0, 8, 8, 4.001},
        {"a cylinder with caps", solids::cylinder(24, 4), 60.0, 3, 3, 4.001},
        {"a cone with a base", cone(), 60.0, 2, 2, 4.001},
        {"a cube that is smooth", solids::box(3, 3, 3), 180.0, 1, 6, 4.06},
        {"a double torus", plateWithTwoHoles(), 180.0, 1, 14, 4.1},
        {"a box with roundings", solids::roundedBox(0.3, 4), 89.0, 1, 8, 4.1},
        {"a sphere", solids::sphere(24), 89.0, 1, 12, 4.1},
        {"a torus", surfaces::torus(24, 12, 0), 89.0, 1, 24, 4.1},
        {"a tube", surfaces::tube(12, 8, 1.0, 0.5), 89.0, 1, 1, 4.001},
        {"a flat sheet", surfaces::sheet(5, 4), 89.0, 1, 1, 4.001},
        {"a flat frame",
         surfaces::sheetWithHoles(5, 4, [](int i, int j) { return i == 2 && j == 2; }), 89.0, 1, 1,
         4.001},
    };
}

TEST(Seams, PatchesOfHardSurfacesCanBeLaidFlat)
{
    for (const Solid& solid : solidsOfAllKinds()) {
        SCOPED_TRACE(solid.name);
        const Edges edges = manufactured(solid.mesh, solid.angle);
        const CutMesh cut(solid.mesh, edges);
        const int count = static_cast<int>(cut.patches.size());
        expectOpen(cut);
        EXPECT_GE(count, solid.leastPatches);
        EXPECT_LE(count, solid.mostPatches);
        EXPECT_LE(seams::worstEnergy(cut), solid.mostEnergy);
        EXPECT_EQ(forBaking(solid.mesh, solid.angle), edges);
    }
}

TEST(Seams, DependNeitherOnTheSizeNorOnTheRun)
{
    for (const Solid& solid : solidsOfAllKinds()) {
        SCOPED_TRACE(solid.name);
        const Edges edges = manufactured(solid.mesh, solid.angle);
        EXPECT_EQ(manufactured(solid.mesh, solid.angle), edges);
        for (const double scale : {0.001, 1000.0 / 3.0}) {
            IslandMesh scaled = solid.mesh;
            for (Vec3& p : scaled.positions)
                p = {static_cast<float>(scale * p.x + 7.0 * scale), static_cast<float>(scale * p.y),
                     static_cast<float>(scale * p.z)};
            EXPECT_EQ(manufactured(scaled, solid.angle), edges);
        }
    }
}

TEST(Seams, SmallPatchesGoToTheirNeighbours)
{
    const IslandMesh mesh = solids::cylinder(24, 4);
    double area = 0.0;
    for (const seams::Patch& patch : CutMesh(mesh, {}).patches)
        area += patch.area;
    // A cap is an eighth of the whole.
    EXPECT_EQ(CutMesh(mesh, manufactured(mesh, 60.0, 0.1)).patches.size(), 3U);
    for (const double ratio : {0.15, 0.3, 0.45}) {
        const CutMesh cut(mesh, manufactured(mesh, 60.0, ratio));
        expectOpen(cut);
        EXPECT_LE(seams::worstEnergy(cut), 4.1);
        for (const seams::Patch& patch : cut.patches)
            EXPECT_GE(patch.area, ratio * area);
    }
    const IslandMesh cube = solids::box(1, 1, 1);
    EXPECT_EQ(CutMesh(cube, forBaking(cube, 89.0, 2)).patches.size(), 6U);
    for (const int least : {3, 5, 6}) {
        const CutMesh cut(cube, forBaking(cube, 89.0, least));
        expectOpen(cut);
        EXPECT_LE(seams::worstEnergy(cut), 4.001);
        for (const seams::Patch& patch : cut.patches)
            EXPECT_GE(patch.triangles, least);
    }
}

/// What there is to cut: no triangles with a repeated corner, no copies.
IslandMesh sound(IslandMesh mesh)
{
    std::set<std::set<int>> seen;
    std::erase_if(mesh.triangles, [&](const Triangle& t) {
        const std::set<int> corners(t.begin(), t.end());
        return corners.size() < 3 || !seen.insert(corners).second;
    });
    return mesh;
}

TEST(Seams, BrokenSurfacesGetSeamsToo)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        const IslandMesh mesh = solids::soup(seed);
        const double angle = std::array{-1.0, 0.0, 45.0, 1e9}[seed % 4];
        for (const Edges& edges : {manufactured(mesh, angle, 2.0), forBaking(mesh, angle, -3)})
            expectOpen(CutMesh(sound(mesh), edges));
    }
}

TEST(Seams, AreEdges)
{
    SolverSession session(surfaces::tetrahedron());
    session.run("Select", {{"#PrimType string \"Edge\"", "Vertex"}, {"#Baking table"}});
    EXPECT_NE(session.error().find("Edge"), std::string::npos) << session.error();
    session.run("Select",
                {{"#Manufactured table"},
                 {"#Manufactured.Angle double", std::numeric_limits<double>::infinity()}});
    EXPECT_TRUE(session.hasError());
}

} // namespace
