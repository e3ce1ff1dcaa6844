#include "LayoutChecks.h"
#include "Surfaces.h"

#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/BorderBarrier.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/BorderMotion.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/FlatStart.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

using namespace unfold3d;

namespace
{

std::vector<Vec2> seenFromAbove(const IslandMesh& mesh)
{
    std::vector<Vec2> uv;
    uv.reserve(mesh.positions.size());
    for (const Vec3& p : mesh.positions)
        uv.push_back({p.x, p.y});
    return uv;
}

std::vector<Vec2> onBorder(const Border& border, const std::vector<Vec2>& uv)
{
    return borderPositions(border, {uv});
}

TEST(Border, WaysGoTheShorterWayRoundAndOverPinches)
{
    const auto pointAt = [](const Border& border, int vertex) {
        for (int p = 0; p < border.size(); ++p)
            if (border.vertexOf(p) == vertex)
                return p;
        return -1;
    };
    const Border sheet(surfaces::sheet(4, 1));
    EXPECT_EQ(sheet.wayToEdge(pointAt(sheet, 0), pointAt(sheet, 2)), 2.0);
    EXPECT_EQ(sheet.wayToEdge(pointAt(sheet, 5), pointAt(sheet, 0)), 1.0);

    // A ring has two loops, and no way between them.
    const Border ring(surfaces::tube(5, 1, 1.0, 1.0));
    EXPECT_EQ(ring.wayToEdge(pointAt(ring, 0), pointAt(ring, 6)),
              std::numeric_limits<double>::infinity());

    // Two triangles that meet in vertex 0: from one's far side to the other's over that vertex.
    const Border blades(surfaces::blades(2));
    EXPECT_EQ(blades.pointsOfSameVertex(pointAt(blades, 0)).size(), 2U);
    EXPECT_NEAR(blades.wayToEdge(pointAt(blades, 1), pointAt(blades, 3)),
                1.0 + std::sqrt(1.0 + 0.2 * 0.2), 1e-12);
}

TEST(BorderCrossings, AreCountedExactly)
{
    const IslandMesh mesh = surfaces::spiral(1, 8); // open ring, its ends near each other
    const Border border(mesh);
    std::vector<Vec2> uv = seenFromAbove(mesh);
    EXPECT_EQ(countBorderCrossings(border, onBorder(border, uv)), 0);
    EXPECT_FALSE(doesBorderCross(border, onBorder(border, uv)));

    // The last corner onto the first edge, then a hair before it, then through it.
    const Vec2 a = uv[0];
    const Vec2 b = uv[1];
    const std::size_t last = uv.size() - 2;
    uv[last] = 0.5 * (a + b);
    EXPECT_TRUE(doesBorderCross(border, onBorder(border, uv)));
    uv[last].y -= 1e-15;
    EXPECT_FALSE(doesBorderCross(border, onBorder(border, uv)));
    uv[last].y = 0.1;
    EXPECT_EQ(countBorderCrossings(border, onBorder(border, uv)), 2);
}

TEST(BorderCrossings, AFanWithinAnotherIsOne)
{
    const IslandMesh mesh = surfaces::blades(2);
    const Border border(mesh);
    const std::vector<Vec2> uv = {{0, 0}, {4, -1}, {4, 1}, {1, -0.1}, {1, 0.1}};
    EXPECT_EQ(layout::countOverlaps(mesh.triangles, uv), 1);
    EXPECT_EQ(countBorderCrossings(border, onBorder(border, uv)), 1);
    EXPECT_TRUE(doesBorderCross(border, onBorder(border, uv)));
}

/// A tube that is much wider in its middle than at its ends.
IslandMesh barrel(int sides, int rings)
{
    IslandMesh mesh = surfaces::tube(sides, rings, 1.0, 1.0);
    for (Vec3& p : mesh.positions) {
        const double width = 1.0 + 4.0 * std::sin(p.z / rings * std::numbers::pi);
        p = {width * p.x, width * p.y, 5.0 * p.z / rings};
    }
    return mesh;
}

// Short loops can turn inside out though no edges cross, since all of them have vertices in common.
TEST(BorderCrossings, NoneMeansThatNothingIsCoveredTwice)
{
    std::vector<IslandMesh> meshes{surfaces::cutCone(1.3, 12, 3), surfaces::cutCone(1.9, 24, 2)};
    for (int sides = 3; sides <= 5; ++sides)
        for (int rings = 1; rings <= 10; rings += 3)
            meshes.push_back(barrel(sides, rings));
    const RunControl control;
    int crossed = 0;
    for (const IslandMesh& shape : meshes) {
        const IslandMesh mesh = surfaces::normalised(shape);
        const Border border(mesh);
        const std::vector<Vec2> start = flatStart(mesh, control).uv;
        for (const bool prevent : {false, true}) {
            FlattenOptions options;
            options.preventBorderCrossings = prevent;
            const FlattenResult result = flatten(mesh, start, options, control, {});
            const bool doesCross = doesBorderCross(border, onBorder(border, result.uv));
            EXPECT_EQ(doesCross, layout::countOverlaps(mesh.triangles, result.uv) > 0);
            EXPECT_EQ(doesCross, result.report.borderCrossings != 0);
            EXPECT_FALSE(prevent && doesCross);
            crossed += doesCross;
        }
    }
    EXPECT_EQ(crossed, 2); // the cones, when nothing holds them back
}

TEST(BorderMotion, StopsAtTheFirstContact)
{
    // A strip bent to a "C"; its ends move towards each other.
    const IslandMesh mesh = surfaces::spiral(1, 12);
    const Border border(mesh);
    std::vector<Vec2> uv = seenFromAbove(mesh);
    const std::size_t last = uv.size() - 2; // (2, 0), beside the middle of the edge (1, 0) (1.5, 0)
    uv[last] = {1.25, -0.3};
    uv[last + 1] = {1.25, -0.8};
    std::vector<Vec2> motion(uv.size());
    motion[last] = {0.0, 1.0};
    EXPECT_NEAR(firstContact(border, onBorder(border, uv), onBorder(border, motion), 2.0), 0.3,
                1e-12);
    EXPECT_EQ(firstContact(border, onBorder(border, uv), onBorder(border, motion), 0.25), 0.25);

    // The edge flees as fast as the point comes.
    motion[0] = motion[1] = {0.0, 1.0};
    EXPECT_EQ(firstContact(border, onBorder(border, uv), onBorder(border, motion), 0.29), 0.29);

    std::vector<Spring> brakes;
    motion[0] = motion[1] = {};
    addBrakes(border, onBorder(border, uv), onBorder(border, motion), 0.29, 1.0, brakes);
    EXPECT_TRUE(brakes.empty());
    addBrakes(border, onBorder(border, uv), onBorder(border, motion), 0.31, 1.0, brakes);
    EXPECT_FALSE(brakes.empty());
}

/// Two facing strips of a bent band with a gap of about `gap` between its ends.
struct Gap
{
    IslandMesh mesh = surfaces::spiral(1, 12);
    Border border{mesh};
    std::vector<Vec2> uv = seenFromAbove(mesh);

    explicit Gap(double gap)
    {
        const std::size_t last = uv.size() - 2;
        uv[last] = {1.2, -gap};
        uv[last + 1] = {1.6, -gap * 1.1};
    }
    std::vector<Vec2> positions() const { return onBorder(border, uv); }
};

RC_GTEST_PROP(BorderBarrier, SpringsHaveTheSlopeOfTheEnergy, (unsigned seed))
{
    std::mt19937 random(seed);
    Gap gap(std::pow(10.0, std::uniform_real_distribution<double>(-5.0, -1.35)(random)));
    const BorderBarrier barrier(gap.border, 0.05, 2.0);
    RC_ASSERT(barrier.energy(gap.positions()) > 0.0);

    std::vector<Spring> springs;
    barrier.addSprings(gap.positions(), springs);
    std::vector<Vec2> gradient(gap.uv.size());
    for (const Spring& spring : springs) {
        RC_ASSERT(spring.curvature >= 0.0);
        for (std::size_t i = 0; i < static_cast<std::size_t>(spring.count); ++i)
            gradient[static_cast<std::size_t>(spring.nodes[i])] +=
                spring.slope * spring.directions[i];
    }
    constexpr double h = 1e-7;
    for (std::size_t v = 0; v < gap.uv.size(); ++v)
        for (const Vec2 axis : {Vec2{1.0, 0.0}, Vec2{0.0, 1.0}}) {
            const Vec2 place = gap.uv[v];
            gap.uv[v] = place + h * axis;
            const double up = barrier.energy(gap.positions());
            gap.uv[v] = place + -h * axis;
            const double down = barrier.energy(gap.positions());
            gap.uv[v] = place;
            RC_ASSERT(std::abs((up - down) / (2.0 * h) - dot(gradient[v], axis)) < 1e-4);
        }
}

TEST(BorderBarrier, ActsAcrossEmptySpaceOnly)
{
    // A thin strip: its long sides are near each other, but across the surface.
    const IslandMesh mesh = surfaces::sheet(40, 1);
    const Border border(mesh);
    const BorderBarrier barrier(border, 1.5, 1.0);
    EXPECT_EQ(barrier.energy(onBorder(border, seenFromAbove(mesh))), 0.0);
    EXPECT_GT(BorderBarrier(Gap(0.02).border, 0.05, 1.0).energy(Gap(0.02).positions()), 0.0);
}

TEST(BorderBarrier, AMoveThatEatsUpAGapIsUnfair)
{
    const Gap wide(0.04);
    const BorderBarrier barrier(wide.border, 0.05, 1.0);
    EXPECT_TRUE(barrier.isFairMove(wide.positions(), Gap(0.03).positions()));
    EXPECT_FALSE(barrier.isFairMove(wide.positions(), Gap(0.001).positions()));
}

} // namespace
