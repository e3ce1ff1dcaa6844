#include "LayoutChecks.h"
#include "SolverSession.h"
#include "Surfaces.h"

#include "Unfold3D/mesh/EdgeNumbers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace unfold3d;

namespace
{

using OptimizeKeys = SolverSession::OptimizeKeys;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The surface seen from above, as floats: flips none of the triangles of a sheet or of hills.
std::vector<Vec2> fromAbove(const IslandMesh& mesh, Vec2 scale = {1.0, 1.0})
{
    std::vector<Vec2> uvs;
    uvs.reserve(mesh.positions.size());
    for (const Vec3& p : mesh.positions)
        uvs.push_back({static_cast<float>(3.0 + scale.x * p.x), static_cast<float>(scale.y * p.y)});
    return uvs;
}

void shake(std::vector<Vec2>& uvs, std::mt19937& random, double by)
{
    std::normal_distribution<double> shift(0.0, by);
    for (Vec2& p : uvs)
        p = {static_cast<float>(p.x + shift(random)), static_cast<float>(p.y + shift(random))};
}

std::vector<Vec2> optimized(SolverSession& session, const OptimizeKeys& keys = {})
{
    session.optimize(keys);
    EXPECT_FALSE(session.hasError()) << session.error();
    return session.exportUVs();
}

std::vector<Vec2> optimized(const IslandMesh& mesh, const std::vector<Vec2>& uvs,
                            const OptimizeKeys& keys = {})
{
    SolverSession session(mesh, uvs);
    session.selectAllVertices();
    return optimized(session, keys);
}

/// Means over the surface, at the best scale of the whole: 4 without distortion.
struct Distortions
{
    double lengths; ///< s1^2 + s2^2 + 1/s1^2 + 1/s2^2
    double angles;  ///< 2 (s1/s2 + s2/s1)
};

Distortions distortionsOf(const IslandMesh& mesh, const std::vector<Vec2>& uvs)
{
    double stretch = 0.0;
    double shrink = 0.0;
    double angles = 0.0;
    double area = 0.0;
    for (const auto& [a, b, c] : mesh.triangles) {
        const Vec3 e1 = mesh.positions[at(b)] - mesh.positions[at(a)];
        const Vec3 e2 = mesh.positions[at(c)] - mesh.positions[at(a)];
        const Vec2 f1 = uvs[at(b)] - uvs[at(a)];
        const Vec2 f2 = uvs[at(c)] - uvs[at(a)];
        const double rest = length(cross(e1, e2));
        const double det = std::abs(cross(f1, f2)) / rest;
        // The trace of the first fundamental forms' quotient.
        const double squares = (dot(e2, e2) * dot(f1, f1) - 2.0 * dot(e1, e2) * dot(f1, f2) +
                                dot(e1, e1) * dot(f2, f2)) /
                               (rest * rest);
        stretch += rest * squares;
        shrink += rest * squares / (det * det);
        angles += rest * 2.0 * squares / det;
        area += rest;
    }
    return {2.0 * std::sqrt(stretch * shrink) / area, angles / area};
}

double signedArea(const IslandMesh& mesh, const std::vector<Vec2>& uvs)
{
    double area = 0.0;
    for (const auto& [a, b, c] : mesh.triangles)
        area += 0.5 * doubleArea(uvs[at(a)], uvs[at(b)], uvs[at(c)]);
    return area;
}

/// Triangles that turn the other way than most of the area of `side`.
int countFlips(const IslandMesh& mesh, const std::vector<Vec2>& uvs, const std::vector<Vec2>& side)
{
    std::vector<Vec2> turned = uvs;
    if (signedArea(mesh, side) < 0.0)
        for (Vec2& p : turned)
            p.x = -p.x;
    return layout::countFlips(mesh.triangles, turned);
}

/// Whether it is clear which side of a layout is up.
bool hasSide(const IslandMesh& mesh, const std::vector<Vec2>& uvs)
{
    double sizes = 0.0;
    for (const auto& [a, b, c] : mesh.triangles)
        sizes += 0.5 * std::abs(doubleArea(uvs[at(a)], uvs[at(b)], uvs[at(c)]));
    return std::abs(signedArea(mesh, uvs)) > 0.51 * sizes;
}

Vec2 middleOf(const std::vector<Vec2>& uvs)
{
    const auto [left, right] = std::minmax_element(
        uvs.begin(), uvs.end(), [](const Vec2& a, const Vec2& b) { return a.x < b.x; });
    const auto [low, high] = std::minmax_element(
        uvs.begin(), uvs.end(), [](const Vec2& a, const Vec2& b) { return a.y < b.y; });
    return 0.5 * Vec2{left->x + right->x, low->y + high->y};
}

TEST(Optimize, LaysOutWithoutDistortionWhatCanBeAndKeepsItsSizePlaceAndSide)
{
    struct Case
    {
        const char* name;
        IslandMesh mesh;
    };
    const Case cases[] = {
        {"a sheet", surfaces::sheet(7, 5)},
        {"a sheet with holes",
         surfaces::sheetWithHoles(7, 7, [](int i, int j) { return i % 3 == 1 && j % 3 == 1; })},
        {"one triangle", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 1}}, {{0, 1, 2}}}},
    };
    for (const Case& c : cases)
        for (const double mirror : {1.0, -1.0}) {
            SCOPED_TRACE(c.name);
            const std::vector<Vec2> before = fromAbove(c.mesh, {0.02 * mirror, 0.05});
            const std::vector<Vec2> after = optimized(c.mesh, before);
            EXPECT_NEAR(distortionsOf(c.mesh, after).lengths, 4.0, 1e-6);
            EXPECT_NEAR(signedArea(c.mesh, after) / signedArea(c.mesh, before), 1.0, 1e-5);
            EXPECT_LT(length(middleOf(after) - middleOf(before)), 1e-5);
            EXPECT_EQ(optimized(c.mesh, before), after) << "the same bits every time";
        }
}

TEST(Optimize, TheMixLeansToAnglesOrToLengths)
{
    const IslandMesh mesh = surfaces::hills(16, 12, 2.5);
    const std::vector<Vec2> before = fromAbove(mesh, {1.3, 1.0});
    Distortions last{0.0, 1e30};
    for (const float lengths : {0.0F, 0.3F, 1.0F}) {
        const Distortions present =
            distortionsOf(mesh, optimized(mesh, before, {.lengths = lengths}));
        if (lengths > 0.0F) {
            EXPECT_LT(present.lengths, last.lengths);
            EXPECT_GT(present.angles, last.angles);
        }
        last = present;
    }
}

std::vector<int> someVertices(const IslandMesh& mesh, std::mt19937& random)
{
    std::vector<int> chosen;
    const double share = std::uniform_real_distribution<double>(0.1, 0.9)(random);
    for (int v = 0; v < mesh.vertexCount(); ++v)
        if (std::uniform_real_distribution<double>(0.0, 1.0)(random) < share)
            chosen.push_back(v);
    if (chosen.empty())
        chosen.push_back(0);
    return chosen;
}

TEST(Optimize, LeavesNothingButNumbersOfHostileLayouts)
{
    std::mt19937 random(3);
    const double values[] = {0.0, 1.0, 1.0, -1.0, 1e-30, 1e30, 3.4e-39, 16777217.0};
    std::uniform_int_distribution<std::size_t> any(0, std::size(values) - 1);
    std::uniform_int_distribution<std::size_t> atMost(1, std::size(values));
    for (int round = 0; round < 100; ++round) {
        IslandMesh mesh = surfaces::hills(1 + round % 5, 1 + round % 7, round % 2 ? 1.0 : 0.0);
        if (round % 11 == 0)
            for (Vec3& p : mesh.positions)
                p = round % 2 == 0 ? Vec3{} : Vec3{p.x, 0.0, 0.0};
        const std::size_t kinds = atMost(random);
        std::vector<Vec2> before(mesh.positions.size());
        for (Vec2& p : before)
            p = {values[any(random) % kinds], values[any(random) % kinds]};
        SolverSession session(mesh, before);
        if (round % 3 > 0)
            session.select("Vertex", someVertices(mesh, random));
        if (round % 4 == 0)
            session.pinEdges({0, 1, 2}, round % 8 == 0);
        for (const Vec2 p : optimized(session, {.noFlips = round % 5 > 0, .power = 0.9F}))
            ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << round;
    }
}

// Shaken a little or till nothing is where it was: selections, powers and mixes of all kinds.
RC_GTEST_PROP(Optimize, NeverMovesWhatIsNotSelectedNorFlipsMore, (unsigned seed))
{
    std::mt19937 random(seed);
    const IslandMesh mesh =
        surfaces::hills(*rc::gen::inRange(1, 10), *rc::gen::inRange(1, 10), 1.0);
    std::vector<Vec2> before = fromAbove(mesh);
    shake(before, random, std::uniform_real_distribution<double>(0.0, 0.6)(random));
    const std::vector<int> chosen = someVertices(mesh, random);
    OptimizeKeys keys;
    keys.bordersApart = *rc::gen::arbitrary<bool>();
    keys.noFlips = *rc::gen::arbitrary<bool>();
    keys.iterations = *rc::gen::inRange(0, 4);
    keys.power = *rc::gen::element(0.0F, 0.3F, 0.7F, 1.0F);
    keys.lengths = *rc::gen::element(0.0F, 0.5F, 1.0F);

    SolverSession session(mesh, before);
    session.select("Vertex", chosen);
    const std::vector<Vec2> after = optimized(session, keys);
    if (keys.noFlips && hasSide(mesh, before))
        RC_ASSERT(countFlips(mesh, after, before) <= countFlips(mesh, before, before));
    if (keys.bordersApart)
        RC_ASSERT(layout::countCrossings(mesh.triangles, after) <=
                  layout::countCrossings(mesh.triangles, before));
    std::size_t moved = 0;
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        const bool isChosen = std::binary_search(chosen.begin(), chosen.end(), v);
        RC_ASSERT(std::isfinite(after[at(v)].x + after[at(v)].y));
        RC_ASSERT(isChosen || after[at(v)] == before[at(v)]);
        moved += !(after[at(v)] == before[at(v)]);
    }
    RC_ASSERT((keys.power > 0.0F && keys.iterations > 0) || moved == 0U);
}

// Rolled out, the sheet of a cone with more than one turn would lie over itself.
TEST(Optimize, BordersKeepOffBordersThatStay)
{
    constexpr int sides = 16;
    const IslandMesh mesh = surfaces::cutCone(1.3, sides, 4);
    std::vector<Vec2> before{{0.0, 0.0}};
    std::vector<int> chosen;
    for (int v = 1; v < mesh.vertexCount(); ++v) {
        const int side = (v - 1) % (sides + 1);
        const int ring = (v - 1) / (sides + 1);
        const double radius = 1.0 + ring;
        const double angle = 6.0 * side / sides;
        before.push_back({static_cast<float>(radius * std::cos(angle)),
                          static_cast<float>(radius * std::sin(angle))});
        if (side > sides / 4)
            chosen.push_back(v);
    }
    ASSERT_EQ(layout::countFlips(mesh.triangles, before), 0);
    SolverSession session(mesh, before);
    session.select("Vertex", chosen);
    const std::vector<Vec2> after = optimized(session);
    EXPECT_LT(distortionsOf(mesh, after).lengths, distortionsOf(mesh, before).lengths);
    EXPECT_EQ(layout::countFlips(mesh.triangles, after), 0);
    EXPECT_EQ(layout::countCrossings(mesh.triangles, after), 0);
}

// A tetrahedron hangs on one corner of a sheet that is folded.
TEST(Optimize, RelaxesWhatIsOpenRoundClosedParts)
{
    IslandMesh mesh = surfaces::sheet(4, 4);
    const int sheetVertices = mesh.vertexCount();
    const std::size_t sheetTriangles = mesh.triangles.size();
    const IslandMesh closed = surfaces::tetrahedron();
    for (const Vec3& p : closed.positions)
        mesh.positions.push_back(p);
    for (const auto& [a, b, c] : closed.triangles)
        mesh.triangles.push_back({a + sheetVertices, b + sheetVertices, c + sheetVertices});
    for (Triangle& t : mesh.triangles)
        std::replace(t.begin(), t.end(), sheetVertices, 0);
    std::vector<Vec2> before = fromAbove(mesh);
    std::swap(before[6], before[18]);
    const std::vector<Vec2> after = optimized(mesh, before);
    mesh.triangles.resize(sheetTriangles);
    EXPECT_EQ(layout::countFlips(mesh.triangles, after), 0);
    EXPECT_NEAR(distortionsOf(mesh, after).lengths, 4.0, 1e-6);
    for (int v = sheetVertices; v < static_cast<int>(after.size()); ++v)
        EXPECT_EQ(after[at(v)], before[at(v)]);
    EXPECT_EQ(after[0], before[0]);
}

// Where the border is sound and stays, or can go anywhere, a tangle always has a way out.
RC_GTEST_PROP(Optimize, UntanglesWhatTheBorderAllows, (unsigned seed))
{
    std::mt19937 random(seed);
    const int n = *rc::gen::inRange(2, 12);
    const IslandMesh mesh = surfaces::hills(n, n, 1.0);
    const bool isInnerOnly = *rc::gen::arbitrary<bool>();
    const auto isInner = [&](int v) {
        const int i = v % (n + 1);
        const int j = v / (n + 1);
        return i > 0 && j > 0 && i < n && j < n;
    };
    const std::vector<Vec2> home = fromAbove(mesh);
    std::vector<Vec2> before = home;
    shake(before, random, *rc::gen::element(0.5, 2.0, 20.0));
    std::vector<int> chosen;
    for (int v = 0; v < mesh.vertexCount(); ++v)
        if (!isInnerOnly || isInner(v))
            chosen.push_back(v);
        else
            before[at(v)] = home[at(v)];

    SolverSession session(mesh, before);
    session.select("Vertex", chosen);
    const std::vector<Vec2> after =
        optimized(session, {.bordersApart = *rc::gen::arbitrary<bool>()});
    RC_ASSERT(countFlips(mesh, after, before) == 0);
    RC_ASSERT(layout::countCrossings(mesh.triangles, after) == 0);
}

constexpr int columns = 9;
constexpr int rows = 6;

int vertexAt(int i, int j)
{
    return i + j * (columns + 1);
}

std::vector<int> edgesOfRow(const IslandMesh& mesh, int row)
{
    std::vector<int> ids;
    const EdgeNumbers edges = numberEdges(mesh.triangles);
    for (int e = 0; e < edges.count(); ++e) {
        const auto [a, b] = edges.vertices[at(e)];
        if (a / (columns + 1) == row && b / (columns + 1) == row)
            ids.push_back(e);
    }
    return ids;
}

TEST(Optimize, PinnedEdgesEndStraightWhateverElseIsAsked)
{
    const IslandMesh mesh = surfaces::hills(columns, rows, 1.0);
    std::mt19937 random(7);
    std::vector<Vec2> before = fromAbove(mesh);
    shake(before, random, 0.05);
    std::vector<int> upper;
    for (int v = vertexAt(0, 3); v < mesh.vertexCount(); ++v)
        upper.push_back(v);
    const std::vector<int> leftOfRow{vertexAt(0, 4), vertexAt(1, 4), vertexAt(2, 4),
                                     vertexAt(4, 4), vertexAt(5, 4), vertexAt(6, 4),
                                     vertexAt(7, 4), vertexAt(8, 4), vertexAt(9, 4)};
    for (const std::vector<int>& chosen : {std::vector<int>(), upper, leftOfRow})
        for (const int iterations : {0, 2})
            for (const float power : {0.0F, 0.5F, 1.0F}) {
                SCOPED_TRACE(testing::Message() << chosen.size() << " chosen, power " << power
                                                << ", " << iterations << " iterations");
                SolverSession session(mesh, before);
                session.pinEdges(edgesOfRow(mesh, 4), false);
                session.select("Vertex", chosen);
                const std::vector<Vec2> after =
                    optimized(session, {.iterations = iterations, .power = power});
                EXPECT_FALSE(NU3D::CUnfold3DAPI::HasWarning(session.last())) << session.warning();
                EXPECT_EQ(layout::countFlips(mesh.triangles, after), 0);
                for (int i = 1; i <= columns; ++i)
                    EXPECT_NEAR(after[at(vertexAt(i, 4))].y, after[at(vertexAt(0, 4))].y, 1e-6);
                for (int v = 0; v < mesh.vertexCount() && !chosen.empty(); ++v)
                    EXPECT_TRUE(std::binary_search(chosen.begin(), chosen.end(), v) ||
                                after[at(v)] == before[at(v)]);
            }
}

} // namespace
