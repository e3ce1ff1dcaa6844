#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/projection/PlacedNode.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr auto slot = kyUVTypes::UVSet0;
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();
using DoubleUV = osg::Vector<double, 2>;

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
    Ids triangles, triangleCounts, vertices, vertexCounts;
    kyUVUtils::findUVIslands(coreOf(node), node, slot, nullptr, 0, false, triangles, triangleCounts,
                             vertices, vertexCounts);
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(node), node, slot, uvs);
    std::vector<osg::Point<double, 3>> positions;
    for (const ActiveSurface& surface : activeSurfaces(node))
        for (const osg::Pnt3f& p : surface.geometry->getPositions()->getValues())
            positions.push_back(osg::TransformationMatrix<double>(toWorld).transformPoint(
                osg::Point<double, 3>(p)));
    std::vector<Island> islands(vertexCounts.size());
    const unsigned int* corner = triangles.data();
    const unsigned int* vertex = vertices.data();
    for (std::size_t i = 0; i < islands.size(); ++i) {
        Island& island = islands[i];
        island.seed = *vertex;
        for (const unsigned int* end = corner + triangleCounts[i]; corner < end; corner += 3) {
            const auto& a = positions[corner[0]];
            const DoubleUV d = DoubleUV(uvs[corner[1]]) - DoubleUV(uvs[corner[0]]);
            const DoubleUV e = DoubleUV(uvs[corner[2]]) - DoubleUV(uvs[corner[0]]);
            island.worldArea +=
                (positions[corner[1]] - a).cross(positions[corner[2]] - a).length() / 2;
            island.uvArea += std::abs(d.x() * e.y() - d.y() * e.x()) / 2;
        }
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
    const auto before = measure(node, toWorld);
    RC_PRE(!before.empty());
    const float width = .5F + std::abs(mathtest::number(3));
    Ids seeds;
    for (const Island& island : before)
        if (*rc::gen::arbitrary<bool>())
            seeds.push_back(island.seed);
    osg::GeoTmpIndexEditInterface(coreOf(node), kyUVTypes::IslandSeeds).assign(seeds);
    const bool selectedOnly = !seeds.empty();
    RC_ASSERT(kyUVUtils::scaleToMatchWorldSize(coreOf(node), node, slot, width, 2, selectedOnly) ==
              kyUVTypes::Success);
    const auto after = measure(node, toWorld);
    RC_ASSERT(after.size() == before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        const bool isAsked = !selectedOnly || std::ranges::count(seeds, before[i].seed) > 0;
        const double wanted =
            isAsked && before[i].uvArea > 1e-6 ? after[i].worldArea / width / 2 : before[i].uvArea;
        RC_ASSERT(std::abs(after[i].uvArea - wanted) <= 1e-4 * wanted + 1e-9);
        RC_ASSERT(!selectedOnly || (after[i].center - before[i].center).length() < 1e-4);
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
        osg::GeoTmpIndexEditInterface(coreOf(place.node), kyUVTypes::IslandSeeds).assign(Ids{2});
        kyUVUtils::scaleToMatchWorldSize(coreOf(place.node), place.node, slot, 1, 1, selectedOnly);
        return place.uvs(slot);
    };
    for (const bool useCompactMesh : {false, true}) {
        kyUVUtils::setUseCompactMesh(useCompactMesh);
        // The middle of all is (2.75, 0.75); the first island grows by 2, the second by 1.
        EXPECT_EQ(scaled(start, false)[0], Vec2f(-2.75F, -.75F));
        EXPECT_EQ(scaled(start, false)[6], start[6]);
        EXPECT_EQ(scaled(start, true)[2], Vec2f(1.5F, 1.5F)) << "in place, around (0.5, 0.5)";
        UVs holed = start;
        holed[3] = Vec2f(NotANumber, 1); // leaves the triangle (0, 1, 2); the middle is of four
        EXPECT_EQ(scaled(holed, true)[2], Vec2f(1.5F, 1.75F));
        EXPECT_TRUE(std::isnan(scaled(holed, false)[3].x()));
        EXPECT_EQ(scaled(holed, false)[6], start[6]);
        EXPECT_EQ(scaled(UVs(8, Vec2f(.25F, 1)), false), UVs(8, Vec2f(.25F, 1))) << "no area";
    }
}

TEST(WorldSize, FailsAndChangesNothing)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell()); // without a slot: it must not get one
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    const auto fails = [](const osg::NodePtr& node, float width, bool selectedOnly) {
        return kyUVUtils::scaleToMatchWorldSize(coreOf(node), node, slot, width, 1, selectedOnly) ==
                   kyUVTypes::Failure &&
               !kyUVUtils::hasUVSet(node, slot);
    };
    for (const float width : {0.F, -1.F, NotANumber, std::numeric_limits<float>::infinity()})
        EXPECT_TRUE(fails(shell, width, false)) << width;
    EXPECT_TRUE(fails(broken, 1, false));
    EXPECT_TRUE(fails(shell, 1, true)) << "no list";
    for (const Ids& seeds : {Ids{}, Ids{99}}) {
        osg::GeoTmpIndexEditInterface(coreOf(shell), kyUVTypes::IslandSeeds).assign(seeds);
        EXPECT_TRUE(fails(shell, 1, true)) << "an empty list, or of vertices that aren't there";
    }
}

} // namespace
