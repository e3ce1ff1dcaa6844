#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/Matrix.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/projection/PlacedNode.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

using Point = osg::Point<double, 3>;
using DoubleUV = osg::Vector<double, 2>;
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

/// An island as it can be measured from outside.
struct Island
{
    unsigned int seed = 0;
    double worldArea = 0;
    double uvArea = 0;
    DoubleUV center;
};

std::vector<Island> measure(const osg::NodePtr& node, const osg::Matrix& toWorld)
{
    Ids triangles;
    Ids triangleCounts;
    Ids vertices;
    Ids vertexCounts;
    kyUVUtils::findUVIslands(coreOf(node), node, slot, nullptr, 0, false, triangles, triangleCounts,
                             vertices, vertexCounts);
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(node), node, slot, uvs);
    std::vector<Point> positions;
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (const osg::Pnt3f& p : surface.geometry->getPositions()->getValues())
            positions.emplace_back(
                osg::TransformationMatrix<double>(toWorld).transformPoint(Point(p)));

    std::vector<Island> islands(vertexCounts.size());
    const unsigned int* corner = triangles.data();
    const unsigned int* vertex = vertices.data();
    for (std::size_t i = 0; i < islands.size(); ++i) {
        Island& island = islands[i];
        for (const unsigned int* end = corner + triangleCounts[i]; corner < end; corner += 3) {
            const Point& a = positions[corner[0]];
            const DoubleUV uv(uvs[corner[0]]);
            const DoubleUV d = DoubleUV(uvs[corner[1]]) - uv;
            const DoubleUV e = DoubleUV(uvs[corner[2]]) - uv;
            island.worldArea +=
                (positions[corner[1]] - a).cross(positions[corner[2]] - a).length() / 2;
            island.uvArea += std::abs(d.x() * e.y() - d.y() * e.x()) / 2;
        }
        island.seed = *vertex;
        for (const unsigned int* end = vertex + vertexCounts[i]; vertex < end; ++vertex)
            island.center += DoubleUV(uvs[*vertex]) * (1. / vertexCounts[i]);
    }
    return islands;
}

RC_GTEST_PROP(WorldSize, GivesAllIslandsOneScaleUnderAnyWorldMatrix, ())
{
    const osg::Matrix toWorld = randomPlace();
    const PlacedNode place(quad(), toWorld);
    const auto node = randomManifoldShell(*rc::gen::arbitrary<std::uint32_t>());
    place.parent->addChild(node);
    const osg::GeometryPtr core = coreOf(node);
    const auto before = measure(node, toWorld);
    const float width = .5F + std::abs(mathtest::number(3));
    Ids seeds;
    for (const Island& island : before)
        if (*rc::gen::arbitrary<bool>())
            seeds.push_back(island.seed);
    osg::GeoTmpIndexEditInterface(core, kyUVTypes::IslandSeeds).assign(seeds);
    const bool selectedOnly = !seeds.empty();

    RC_ASSERT(kyUVUtils::scaleToMatchWorldSize(core, node, slot, width, 2, selectedOnly) ==
              kyUVTypes::Success);
    const auto after = measure(node, toWorld);
    RC_ASSERT(after.size() == before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        const bool isAsked = !selectedOnly || std::ranges::count(seeds, before[i].seed) > 0;
        const bool hasArea = before[i].uvArea > 1e-6;
        if (isAsked && hasArea)
            RC_ASSERT(std::abs(after[i].uvArea / after[i].worldArea * width * 2 - 1) < 1e-4);
        else
            RC_ASSERT(std::abs(after[i].uvArea - before[i].uvArea) < 1e-6);
        if (selectedOnly)
            RC_ASSERT((after[i].center - before[i].center).length() < 1e-4);
    }
}

/// Two quads of unit size, 2 by 2 in the world, that have UVs of the area 1 and 4.
TEST(WorldSize, ScalesEachIslandAndItsWayFromTheMiddleAndPassesOverWhatIsNoNumber)
{
    const UVs start{Vec2f(0, 0), Vec2f(1, 0), Vec2f(1, 1), Vec2f(0, 1),
                    Vec2f(4, 0), Vec2f(6, 0), Vec2f(6, 2), Vec2f(4, 2)};
    const PlacedNode place(quadsApart(2), osg::Matrix::scaling(osg::Vec3f(2, 2, 1)));
    const auto scaled = [&](const UVs& uvs, bool selectedOnly) {
        kyUVUtils::setTexSlot(coreOf(place.node), slot, tiny::texCoords(uvs));
        EXPECT_EQ(kyUVUtils::scaleToMatchWorldSize(coreOf(place.node), place.node, slot, 1, 1,
                                                   selectedOnly),
                  kyUVTypes::Success);
        return place.uvs(slot);
    };
    for (const bool useCompactMesh : {false, true}) {
        kyUVUtils::setUseCompactMesh(useCompactMesh);
        // The middle of all is (2.75, 0.75); the first island grows by 2, the second by 1.
        EXPECT_EQ(scaled(start, false),
                  (UVs{Vec2f(-2.75F, -.75F), Vec2f(-.75F, -.75F), Vec2f(-.75F, 1.25F),
                       Vec2f(-2.75F, 1.25F), start[4], start[5], start[6], start[7]}));
        // In its place: its middle is (0.5, 0.5).
        osg::GeoTmpIndexEditInterface(coreOf(place.node), kyUVTypes::IslandSeeds)
            .assign(std::vector{2U});
        EXPECT_EQ(scaled(start, true)[2], Vec2f(1.5F, 1.5F));

        UVs holed = start;
        holed[3] = Vec2f(NotANumber, 1); // the triangle (0, 1, 2) is left, of half the area
        const UVs after = scaled(holed, true);
        const Vec2f center(.5F, .25F); // of four
        for (const unsigned int i : {0U, 1U, 2U})
            EXPECT_EQ(after[i], (start[i] - center) * 2.F + center);
        EXPECT_TRUE(std::isnan(after[3].x()));

        UVs flat = start; // no area: keeps its size
        for (const unsigned int i : {0U, 1U, 2U, 3U})
            flat[i] = Vec2f(.25F * static_cast<float>(i), 1);
        EXPECT_EQ(scaled(flat, false), flat);
    }
}

TEST(WorldSize, FailsAndChangesNothing)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell()); // without a slot: it must not get one
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    const struct
    {
        const char* name;
        osg::NodePtr node;
        float width;
        bool selectedOnly;
        Ids seeds;
    } cases[] = {{"no width", shell, 0, false, {}},
                 {"a width below 0", shell, -1, false, {}},
                 {"a width that is no number", shell, NotANumber, false, {}},
                 {"an endless width", shell, std::numeric_limits<float>::infinity(), false, {}},
                 {"no selection", shell, 1, true, {}},
                 {"a vertex that is not there", shell, 1, true, {99}},
                 {"an invalid geometry", broken, 1, false, {}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        osg::GeoTmpIndexEditInterface(coreOf(c.node), kyUVTypes::IslandSeeds).assign(c.seeds);
        EXPECT_EQ(kyUVUtils::scaleToMatchWorldSize(coreOf(c.node), c.node, slot, c.width, 1,
                                                   c.selectedOnly),
                  kyUVTypes::Failure);
        EXPECT_FALSE(kyUVUtils::hasUVSet(c.node, slot));
    }
    const WithoutCompactMesh plainly; // which would have the slot
    const osg::RefPtr<osg::Node> bare(nodeOf(quad()));
    for (const osg::NodePtr& node : {bare.get(), osg::NodePtr()})
        EXPECT_EQ(kyUVUtils::scaleToMatchWorldSize(coreOf(bare), node, slot, 1, 1, false),
                  kyUVTypes::Failure);
}

} // namespace
