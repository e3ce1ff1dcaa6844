#include "LayoutChecks.h"
#include "Surfaces.h"

#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/FlatStart.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace unfold3d;

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

FlattenResult flattenFromStart(const IslandMesh& mesh, const FlattenOptions& options = {})
{
    const RunControl control;
    return flatten(mesh, flatStart(mesh, control).uv, options, control, {});
}

void expectSound(const IslandMesh& mesh, const FlattenResult& result)
{
    ASSERT_EQ(result.uv.size(), mesh.positions.size());
    EXPECT_EQ(layout::countFlips(mesh.triangles, result.uv), 0);
    EXPECT_EQ(layout::countCrossings(mesh.triangles, result.uv), 0);
    EXPECT_EQ(result.report.borderCrossings, 0);
    EXPECT_TRUE(result.report.warnings.empty());
}

/// The longest error of an edge, as a share of the island's size.
double worstLengthError(const IslandMesh& mesh, const std::vector<Vec2>& uv)
{
    double worst = 0.0;
    for (const Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const int a = t[i];
            const int b = t[(i + 1) % 3];
            worst =
                std::max(worst, std::abs(length(uv[at(b)] - uv[at(a)]) -
                                         length(mesh.positions[at(b)] - mesh.positions[at(a)])));
        }
    return worst;
}

TEST(Flatten, LaysOutWithoutDistortionWhatCanBe)
{
    struct Case
    {
        const char* name;
        IslandMesh mesh;
    };
    const Case cases[] = {
        {"one triangle", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 1}}, {{0, 1, 2}}}},
        {"a sheet", surfaces::sheet(6, 5)},
        {"a sheet with holes",
         surfaces::sheetWithHoles(7, 7, [](int i, int j) { return i % 3 == 1 && j % 3 == 1; })},
        {"a cone", surfaces::cutCone(1.0, 24, 3)},
        {"a spiral", surfaces::spiral(3, 24)},
        {"needles", surfaces::needleFan(30)},
        {"triangles that meet in one vertex", surfaces::blades(3)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const IslandMesh mesh = surfaces::normalised(c.mesh);
        const FlattenResult result = flattenFromStart(mesh);
        expectSound(mesh, result);
        EXPECT_TRUE(result.report.converged);
        EXPECT_NEAR(result.report.energy, 4.0, 1e-7);
        EXPECT_LT(worstLengthError(mesh, result.uv), 1e-4);
    }
}

TEST(Flatten, KeepsTheRoomThatIsAskedFor)
{
    constexpr int sides = 40;
    constexpr int rings = 4;
    const IslandMesh mesh = surfaces::normalised(surfaces::cutCone(1.5, sides, rings));
    for (const double room : {0.003, 0.03}) {
        FlattenOptions options;
        options.roomSpace = room;
        const FlattenResult result = flattenFromStart(mesh, options);
        expectSound(mesh, result);
        // The sides of the cut, where they are not too near the tip, in which they meet.
        for (int ring = 2; ring <= rings; ++ring)
            for (int other = 2; other <= rings; ++other) {
                const int right = (ring - 1) * (sides + 1) + 1;
                const int left = (other - 1) * (sides + 1) + 1 + sides;
                EXPECT_GE(length(result.uv[at(left)] - result.uv[at(right)]), room);
            }
    }
}

TEST(Flatten, MoreIterationsNeverEndHigherAndMinusOneGoesOnToRounding)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::hills(14, 11, 2.0));
    double before = std::numeric_limits<double>::infinity();
    for (const int iterations : {0, 1, 2, 3, -1}) {
        SCOPED_TRACE(iterations);
        FlattenOptions options;
        options.iterations = iterations;
        const FlattenResult result = flattenFromStart(mesh, options);
        expectSound(mesh, result);
        EXPECT_LE(result.report.energy, before * (1.0 + 1e-12));
        before = result.report.energy;
    }
    FlattenOptions options;
    EXPECT_LT(flattenFromStart(mesh, options).report.energy, before * (1.0 + 3e-3));
}

/// How far the vertices of a line are from one coordinate.
double spread(const StraightLine& line, const std::vector<Vec2>& uv)
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const int v : line.vertices) {
        const double place = line.horizontal ? uv[at(v)].y : uv[at(v)].x;
        low = std::min(low, place);
        high = std::max(high, place);
    }
    return high - low;
}

constexpr int gridColumns = 12;
constexpr int gridRows = 9;

StraightLine row(int j)
{
    StraightLine line;
    for (int i = 0; i <= gridColumns; ++i)
        line.vertices.push_back(i + j * (gridColumns + 1));
    return line;
}

StraightLine column(int i)
{
    StraightLine line{false, {}};
    for (int j = 0; j <= gridRows; ++j)
        line.vertices.push_back(i + j * (gridColumns + 1));
    return line;
}

TEST(Flatten, LinesEndExactlyStraight)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::hills(gridColumns, gridRows, 2.0));
    struct Case
    {
        const char* name;
        std::vector<StraightLine> lines;
    };
    const Case cases[] = {
        {"one row", {row(4)}},
        {"the four sides", {row(0), row(gridRows), column(0), column(gridColumns)}},
        {"a grid", {row(0), row(3), row(6), column(1), column(5), column(9)}},
        {"a row in two pieces that meet", {{true, {26, 27, 28, 29}}, {true, {29, 30, 31, 32, 33}}}},
        {"two vertices", {{true, {40, 41}}}},
    };
    const double free = flattenFromStart(mesh).report.energy;
    for (const Case& c : cases)
        for (const int iterations : {0, 1}) {
            SCOPED_TRACE(c.name);
            FlattenOptions options;
            options.straight = c.lines;
            options.iterations = iterations;
            const FlattenResult result = flattenFromStart(mesh, options);
            expectSound(mesh, result);
            for (const StraightLine& line : c.lines)
                EXPECT_LT(spread(line, result.uv), 1e-12);
            if (iterations == 1) {
                EXPECT_TRUE(result.report.converged);
                EXPECT_LT(result.report.energy, 1.1 * free);
            }
        }
}

TEST(Flatten, ALineThatTurnsBackIsRolledOut)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::hills(gridColumns, gridRows, 1.0));
    FlattenOptions options;
    options.straight = {{true, {28, 29, 30, 31, 45, 58, 57, 56, 55}}};
    const FlattenResult result = flattenFromStart(mesh, options);
    expectSound(mesh, result);
    EXPECT_TRUE(result.report.warnings.empty());
    EXPECT_LT(spread(options.straight.front(), result.uv), 1e-12);
}

TEST(Flatten, LinesThatCanNotBeAreNamedAndTheRestStaysSound)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::hills(gridColumns, gridRows, 1.0));
    StraightLine upright = row(4);
    upright.horizontal = false;
    // Corner (12, 0) belongs to one triangle, whose three corners are asked for.
    StraightLine withoutEar = row(0);
    withoutEar.vertices.back() = 2 * gridColumns + 1;
    StraightLine withEar = withoutEar;
    withEar.vertices.push_back(gridColumns);
    struct Case
    {
        const char* name;
        std::vector<StraightLine> lines;
        StraightLine kept; ///< what can be had all the same
        std::vector<std::vector<int>> named;
    };
    std::vector<int> twoRows = row(2).vertices;
    const std::vector<int> fourth = row(4).vertices;
    twoRows.insert(twoRows.end(), fourth.begin(), fourth.end());
    const Case cases[] = {
        {"a ring",
         {{true, {15, 16, 17, 28, 30, 41, 42, 43}}},
         {},
         {{15, 16, 17, 28, 30, 41, 42, 43}}},
        {"a branch", {{true, {27, 28, 29, 30, 41, 54}}}, {}, {{27, 28, 29, 30, 41, 54}}},
        {"horizontal and vertical at once", {row(4), upright}, row(4), {upright.vertices}},
        {"a triangle", {{true, {28, 29, 42}}}, {}, {{28, 29, 42}}},
        {"two rows as one", {row(2), {true, {26, 52}}, row(4)}, {}, {twoRows}},
        {"an ear", {withEar}, withoutEar, {{gridColumns}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FlattenOptions options;
        options.straight = c.lines;
        const FlattenResult result = flattenFromStart(mesh, options);
        EXPECT_EQ(layout::countFlips(mesh.triangles, result.uv), 0);
        EXPECT_EQ(layout::countCrossings(mesh.triangles, result.uv), 0);
        ASSERT_EQ(result.report.warnings.size(), 1U);
        EXPECT_EQ(result.report.warnings.front().places, c.named);
        EXPECT_LT(result.report.energy, 5.0);
        EXPECT_LT(spread(c.kept, result.uv), 1e-12);
    }
}

TEST(Flatten, HandsBackAStartThatItCannotUse)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::sheet(2, 2));
    const RunControl control;
    const std::vector<Vec2> good = flatStart(mesh, control).uv;
    for (const Vec2 place : {Vec2{10.0, 10.0}, good[0], Vec2{NAN, 0.0}}) {
        std::vector<Vec2> start = good;
        start[4] = place;
        const FlattenResult result = flatten(mesh, start, {}, control, {});
        EXPECT_EQ(result.report.warnings.size(), 1U);
        EXPECT_EQ(result.uv[0], start[0]);
        EXPECT_FALSE(result.report.converged);
    }

    // Flipped nowhere, but lying over itself.
    const IslandMesh cone = surfaces::normalised(surfaces::cutCone(1.5, 20, 2));
    FlattenOptions options;
    options.preventBorderCrossings = false;
    const std::vector<Vec2> crossing = flattenFromStart(cone, options).uv;
    const FlattenResult result = flatten(cone, crossing, {}, control, {});
    EXPECT_EQ(result.uv, crossing);
    EXPECT_EQ(result.report.warnings.size(), 1U);
    EXPECT_TRUE(flatten(cone, crossing, options, control, {}).report.converged);
}

/// A start in which everything but one corner is squeezed together, by a factor a row.
std::vector<Vec2> squeezed(const IslandMesh& sheet, int columns, double factor)
{
    std::vector<Vec2> uv;
    for (int v = 0; v < sheet.vertexCount(); ++v) {
        const double scale = std::pow(factor, v / (columns + 1));
        uv.push_back({scale * (v % (columns + 1)), scale});
    }
    return uv;
}

TEST(Flatten, GetsOutOfStartsWithTinyTriangles)
{
    constexpr int columns = 6;
    const IslandMesh sheet = surfaces::normalised(surfaces::sheet(columns, 30));
    const std::vector<Vec2> start = squeezed(sheet, columns, 2.5); // energy about 1e24
    ASSERT_EQ(layout::countFlips(sheet.triangles, start), 0);
    const FlattenResult result = flatten(sheet, start, {}, RunControl(), {});
    expectSound(sheet, result);
    EXPECT_NEAR(result.report.energy, 4.0, 1e-3);

    const IslandMesh finger = surfaces::normalised(surfaces::finger(8, 40, 0.3, 0.3));
    FlattenOptions options;
    options.preventBorderCrossings = false;
    EXPECT_EQ(layout::countFlips(finger.triangles, flattenFromStart(finger, options).uv), 0);
}

TEST(Flatten, StandInsOfTrianglesWithoutAreaDoNotSpoilTheRest)
{
    IslandMesh mesh = surfaces::sheet(4, 4);
    // Vertex 12 moves onto its neighbour, vertex 6 onto the line between two others.
    mesh.positions[12] = mesh.positions[13];
    mesh.positions[6] = 0.5 * (mesh.positions[5] + mesh.positions[7]);
    mesh = surfaces::normalised(mesh);
    const FlattenResult result = flattenFromStart(mesh);
    expectSound(mesh, result);
    EXPECT_LT(result.report.energy, 4.2);
}

TEST(Flatten, ProgressRisesAndAStopIsHeard)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::cutCone(1.3, 40, 4));
    RunControl control;
    const std::vector<Vec2> start = flatStart(mesh, control).uv;
    double last = 0.0;
    int calls = 0;
    flatten(mesh, start, {}, control, [&](double fraction) {
        EXPECT_GE(fraction, last);
        EXPECT_LE(fraction, 1.0);
        last = fraction;
        ++calls;
    });
    EXPECT_GT(calls, 1);
    EXPECT_THROW(flatten(mesh, start, {}, control, [&](double) { control.requestStop(); }),
                 Stopped);
}

TEST(Flatten, GivesTheSameBitsEveryTime)
{
    const IslandMesh mesh = surfaces::normalised(surfaces::cutCone(1.4, 40, 4));
    EXPECT_EQ(flattenFromStart(mesh).uv, flattenFromStart(mesh).uv);
}

RC_GTEST_PROP(Flatten, NeverFlipsNorCrossesNorEndsAboveItsStart, ())
{
    std::mt19937 random(*rc::gen::arbitrary<unsigned>());
    IslandMesh mesh = surfaces::hills(*rc::gen::inRange(1, 12), *rc::gen::inRange(1, 12), 1.0);
    const double roughness = std::uniform_real_distribution<double>(0.0, 3.0)(random);
    std::normal_distribution<double> shift(0.0, roughness);
    for (Vec3& p : mesh.positions)
        p = p + Vec3{0.3 * shift(random), 0.3 * shift(random), shift(random)};
    mesh = surfaces::normalised(mesh);

    FlattenOptions options;
    options.iterations = 0;
    const double before = flattenFromStart(mesh, options).report.energy;
    options.iterations = 1;
    const FlattenResult result = flattenFromStart(mesh, options);
    RC_ASSERT(layout::countFlips(mesh.triangles, result.uv) == 0);
    RC_ASSERT(layout::countCrossings(mesh.triangles, result.uv) == 0);
    RC_ASSERT(result.report.energy <= before);
}

} // namespace
