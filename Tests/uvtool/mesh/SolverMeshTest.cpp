#include "uvtool/TempFolder.h"

#include "formats/obj/ObjFormat.h"
#include "mesh/CornerVertices.h"
#include "mesh/Survey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace
{

using namespace uvtool;

DocumentGeometry geometryOf(const std::string& text)
{
    const TempFolder folder;
    return readObj(folder.write("in.obj", text)).geometries.at(0);
}

/// Two squares that meet at the line x = 1, whose ends are positions 2 and 3, listed again as 7 and
/// 8.
///   4---3 8---6
///   |   | |   |
///   1---2 7---5
const std::string squares = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                            "v 2 0 0\nv 2 1 0\nv 1 0 0\nv 1 1 0\n";

TEST(SolverMesh, CornersAreOneVertexWherePositionAndUVAgree)
{
    struct Case
    {
        const char* name;
        std::string text;
        std::size_t islands;
        std::size_t borderEdges;
    };
    const Case cases[] = {
        {"shared positions", squares + "f 1 2 3 4\nf 2 5 6 3\n", 1, 6},
        {"repeated positions and nothing else: cut open", squares + "f 1 2 3 4\nf 7 5 6 8\n", 2, 8},
        {"repeated for the sake of normals",
         squares + "vn 0 0 1\nvn 0 1 0\nf 1//1 2//1 3//1 4//1\nf 7//2 5//2 6//2 8//2\n", 1, 6},
        {"normals of corners need no repeated positions",
         squares + "vn 0 0 1\nvn 0 1 0\nvn 1 0 0\n"
                   "f 1//1 2//1 3//1\nf 1//2 3//2 4//2\nf 7//3 5//3 6//3 8//3\n",
         2, 8},
        {"triangles with positions of their own",
         squares + "f 1 2 4\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 9 10 11\n", 1, 4},
        {"repeated, with the same UVs",
         squares + "vt 0 0\nvt .5 0\nvt .5 1\nvt 0 1\nvt 1 0\nvt 1 1\n"
                   "f 1/1 2/2 3/3 4/4\nf 7/2 5/5 6/6 8/3\n",
         1, 6},
        {"UVs listed twice",
         squares + "vt 0 0\nvt .5 0\nvt .5 1\nvt 0 1\nvt 1 0\nvt 1 1\nvt .5 0\nvt .5 1\n"
                   "f 1/1 2/2 3/3 4/4\nf 2/7 5/5 6/6 3/8\n",
         1, 6},
        {"shared positions, but a seam",
         squares + "vt 0 0\nvt .4 0\nvt .4 1\nvt 0 1\nvt 1 0\nvt 1 1\nvt .6 0\nvt .6 1\n"
                   "f 1/1 2/2 3/3 4/4\nf 2/7 5/5 6/6 3/8\n",
         2, 8},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Survey survey = surveyGeometry(geometryOf(c.text), 0, WithoutUVs);
        EXPECT_EQ(survey.islands.count(), c.islands);
        EXPECT_EQ(survey.islands.borderEdges, c.borderEdges);
    }
}

TEST(SolverMesh, LeavesOutTrianglesThatNoSolverCanUse)
{
    const DocumentGeometry geometry =
        geometryOf(squares + "vt 0 0\nvt .5 0\nvt .5 1\nf 1/1 2/2 3/3\nf 1/1 2/2 2/2\nf 1 3 4\n");
    const Survey all = surveyGeometry(geometry, 0, WithoutUVs);
    EXPECT_EQ(all.mesh.sourceTriangle, (std::vector<std::uint32_t>{0, 2}));
    EXPECT_EQ(all.report.degenerateTriangles, 1U);
    const Survey mapped = surveyGeometry(geometry, 0, WithUVs);
    EXPECT_EQ(mapped.mesh.sourceTriangle, (std::vector<std::uint32_t>{0}));
    EXPECT_EQ(mapped.report.unmappedTriangles, 1U);
}

TEST(SolverMesh, SheetsLetGoOfEachOtherAndClosedPartsOfOpenOnesThatTheyTouch)
{
    const std::string corners = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nv -1 0 0\nv 0 -1 0\nv 5 0 0\n";
    const std::string tetrahedron = "f 1 3 2\nf 1 2 4\nf 2 3 4\nf 3 1 4\n";
    using IsClosed = std::vector<char>;
    struct Case
    {
        const char* name;
        std::string faces;
        IsClosed isClosed; ///< of each island
        std::size_t separatedEdges;
        std::size_t doubledTriangles;
    };
    const Case cases[] = {
        {"two triangles", "f 1 3 2\nf 3 1 5\n", {0}, 0, 0},
        {"three at an edge", "f 1 3 2\nf 3 1 5\nf 1 3 4\n", IsClosed(3), 1, 0},
        {"four at an edge", "f 1 3 2\nf 3 1 5\nf 1 3 4\nf 3 1 7\n", IsClosed(4), 1, 0},
        {"two that wind differently", "f 1 3 2\nf 1 3 5\n", IsClosed(2), 1, 0},
        {"the same twice", "f 1 3 2\nf 1 3 2\n", IsClosed(2), 3, 1},
        {"front and back", "f 1 3 2\nf 1 2 3\n", IsClosed(2), 3, 1},
        {"a sheet with a back", "f 1 3 2\nf 3 1 5\nf 1 2 3\nf 3 5 1\n", IsClosed(2), 5, 2},
        {"a tetrahedron", tetrahedron, {1}, 0, 0},
        {"a triangle at its corner", tetrahedron + "f 1 5 6\n", {1, 0}, 0, 0},
        {"two triangles that touch in a corner", "f 1 2 3\nf 1 5 6\n", {0}, 0, 0},
        {"a triangle between two of its corners", "f 1 2 7\n" + tetrahedron, {0, 1}, 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Survey survey = surveyGeometry(geometryOf(corners + c.faces), 0, WithoutUVs);
        EXPECT_EQ(survey.islands.isClosed, c.isClosed);
        EXPECT_EQ(survey.report.sheets.separatedEdges, c.separatedEdges);
        EXPECT_EQ(survey.report.sheets.doubledTriangles, c.doubledTriangles);
        EXPECT_EQ(survey.islands.sharedEdges, 0U);
    }
}

/// Random triangles over few positions: as many irregular edges as there can be.
std::string randomTriangles(std::mt19937& random)
{
    std::string text;
    for (int v = 0; v < 7; ++v)
        text += "v " + std::to_string(v) + " " + std::to_string(v * v) + " 0\n";
    std::uniform_int_distribution<int> vertex(1, 7);
    for (int t = 0; t < 12; ++t)
        text += "f " + std::to_string(vertex(random)) + " " + std::to_string(vertex(random)) + " " +
                std::to_string(vertex(random)) + "\n";
    return text;
}

TEST(SolverMesh, IsManifoldWhateverTheInputIs)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const DocumentGeometry geometry = geometryOf(randomTriangles(random));
        const Survey survey = surveyGeometry(geometry, 0, WithoutUVs);

        EXPECT_EQ(survey.mesh.triangleCount() + survey.report.degenerateTriangles,
                  geometry.triangleCount());
        std::map<std::pair<std::uint32_t, std::uint32_t>, int> directedEdges;
        for (std::size_t i = 0; i < survey.mesh.triangles.size(); ++i) {
            const std::uint32_t from = survey.mesh.triangles[i];
            const std::uint32_t to = survey.mesh.triangles[i % 3 == 2 ? i - 2 : i + 1];
            EXPECT_EQ((++directedEdges[{from, to}]), 1);
            // Splitting vertices moves nothing.
            const std::uint32_t corner =
                geometry.triangles[3 * survey.mesh.sourceTriangle[i / 3] + i % 3];
            EXPECT_EQ(geometry.positions.at(survey.mesh.cornerOfVertex[from]),
                      geometry.positions.at(corner));
        }
    }
}

} // namespace
