#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

using kyUVTypes::UVSet0;

namespace
{

/// Quads in a row that touch, each with UVs of its own:
///
///     3 - 2 7 - 6 ...
///     | / | | / |
///     0 - 1 4 - 5 ...
osg::GeometryPtr touchingQuads(unsigned count)
{
    const osg::GeometryPtr quads = quadsApart(count);
    UVs uvs;
    for (unsigned i = 0; i < 4 * count; ++i) {
        const unsigned quad = i / 4;
        const auto column = static_cast<float>(quad + (i % 4 == 1 || i % 4 == 2 ? 1 : 0));
        const float row = i % 4 < 2 ? 0.F : 1.F;
        quads->getPositions()->setValue(osg::Pnt3f(column, row, 0), i);
        uvs.emplace_back(static_cast<float>(8 * quad) + column, row);
    }
    quads->setTexSlot(0, tiny::texCoords(uvs));
    return quads;
}

/// Grid of side times side cells; vertices row by row.
osg::GeometryPtr grid(unsigned side)
{
    std::vector<osg::Pnt3f> positions;
    UVs uvs;
    Ids indices;
    for (unsigned i = 0; i < (side + 1) * (side + 1); ++i) {
        const unsigned x = i % (side + 1);
        const unsigned y = i / (side + 1);
        positions.emplace_back(x, y, x * y);
        uvs.emplace_back(x, y);
        if (x < side && y < side)
            indices.insert(indices.end(), {i, i + 1, i + side + 2, i, i + side + 2, i + side + 1});
    }
    const osg::GeometryPtr geometry = geometryOf(positions, indices);
    geometry->setTexSlot(0, tiny::texCoords(uvs));
    return geometry;
}

unsigned countOf(const osg::NodePtr& node)
{
    return coreOf(node)->getPositions()->getSize();
}

void setList(const osg::NodePtr& node, unsigned list, const Ids& ids)
{
    osg::GeoTmpIndexEditInterface(coreOf(node), list).assign(ids);
}

/// Plain geometries through a mesh, and as they stand.
class IslandSewing : public testing::TestWithParam<bool>
{
protected:
    IslandSewing() { kyUVUtils::setUseCompactMesh(GetParam()); }
    ~IslandSewing() override { kyUVUtils::setUseCompactMesh(true); }
};

INSTANTIATE_TEST_SUITE_P(WithAndWithoutMesh, IslandSewing, testing::Bool());

TEST_P(IslandSewing, ClosesWhatTouchesAsFarAsIsAskedFor)
{
    const struct
    {
        const char* name;
        Ids islands; ///< their triangles; none for all
        bool matchUVs;
        float step; ///< the right side of the first seam is moved by
        bool isDoubled;
        unsigned vertexCount;
    } cases[] = {{"all", {}, false, 0, false, 8},
                 {"two of three", {0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}, false, 0, false, 10},
                 {"one", {4, 5, 6, 4, 6, 7}, false, 0, false, 12},
                 {"a stale list", {4, 5, 6, 4, 6, 99}, false, 0, false, 12},
                 {"UVs that don't meet", {}, true, 0, false, 12},
                 {"one float step apart", {}, false, 6e-8F, false, 10},
                 {"three at one place", {}, false, 0, true, 14}};
    for (const auto& c : cases) {
        for (const bool otherIslandOnly : {false, true}) {
            SCOPED_TRACE(c.name);
            const osg::RefPtr<osg::Node> node(nodeOf(touchingQuads(c.isDoubled ? 4 : 3)));
            const auto positions = coreOf(node)->getPositions();
            if (c.step > 0) // both ends, so that neither is in one place with the other side
                for (const unsigned i : {4U, 7U})
                    positions->setValue(positions->getValue(i) - osg::Vec3f(c.step, 0, 0), i);
            if (c.isDoubled) // the last quad stands on the border between the first two
                for (const unsigned i : {12U, 13U, 14U, 15U})
                    positions->setValue(
                        osg::Pnt3f(1, positions->getValue(i)[1], i % 4 == 1 || i % 4 == 2 ? 1 : 0),
                        i);
            kyTopologyBridge bridge;
            const Ids mark{1, 2, 3};
            bridge.getImpl()->next.shuffle = mark;
            setList(node, kyUVTypes::IslandTriangles, c.islands);
            const auto sew =
                c.islands.empty() ? &kyUVUtils::sewAllIslands : &kyUVUtils::sewSelectedIslands;
            if (c.islands.empty()) // which has nothing selected
                kyUVUtils::sewSelectedIslands(coreOf(node), node, UVSet0, otherIslandOnly,
                                              c.matchUVs, &bridge);
            EXPECT_EQ(bridge.getImpl()->next.shuffle, mark);
            sew(coreOf(node), node, UVSet0, otherIslandOnly, c.matchUVs, &bridge);
            EXPECT_EQ(countOf(node), c.vertexCount);
            const bool isSewn = c.islands.size() != 6; // there was a common border
            EXPECT_EQ(bridge.getImpl()->next.shuffle == mark, !isSewn);
        }
    }
}

TEST_P(IslandSewing, LeavesASeamWithinAnIslandOpenWhereAsked)
{
    const osg::RefPtr<osg::Node> node(nodeOf(grid(4)));
    setList(node, kyUVTypes::SelectedEdges, {10, 11, 11, 12}); // from the rim to the middle
    kyUVUtils::cutAlongEdges(coreOf(node), node, UVSet0, nullptr);
    ASSERT_EQ(countOf(node), 27U);
    kyUVUtils::sewAllIslands(coreOf(node), node, UVSet0, true, true, nullptr);
    EXPECT_EQ(countOf(node), 27U);
    kyUVUtils::sewAllIslands(coreOf(node), node, UVSet0, false, true, nullptr);
    EXPECT_EQ(countOf(node), 25U) << "a cut moves its sides by less than matters";
}

TEST(IslandSewing, LeavesASurfaceOpenWhereAnotherOneMakesThree)
{
    const osg::GeometryPtr fin = quadsApart(1);
    for (const unsigned i : {0U, 1U, 2U, 3U})
        fin->getPositions()->setValue(osg::Pnt3f(1, i / 2, i % 3 == 0 ? 0 : 1), i);
    const osg::RefPtr<osg::Node> shell(shellOf({touchingQuads(3), fin}));
    kyUVUtils::sewAllIslands(coreOf(shell), shell, UVSet0, false, false, nullptr);
    EXPECT_EQ(surfaceOf(shell, 0)->getPositions()->getSize(), 10U) << "two of its three quads meet";
}

RC_GTEST_PROP(CutAndSew, OfTheSameEdgesGiveBackTheMesh, (bool useMesh))
{
    kyUVUtils::setUseCompactMesh(useMesh);
    const osg::RefPtr<osg::Node> node(nodeOf(grid(4)));
    const osg::GeometryPtr core = coreOf(node);
    const Ids before = core->getIndices()->getValues();
    Random random(*rc::gen::arbitrary<std::uint32_t>());
    Ids edges;
    for (std::size_t i = 0; i < before.size(); ++i)
        if (random.oneIn(4))
            edges.insert(edges.end(), {before[i], before[i % 3 == 2 ? i - 2 : i + 1]});
    setList(node, kyUVTypes::SelectedEdges, edges);
    kyUVUtils::cutAlongEdges(core, node, UVSet0, nullptr);
    const unsigned cutCount = countOf(node);
    RC_CLASSIFY(cutCount > 25);
    kyUVUtils::sewAlongEdges(core, node, UVSet0, nullptr); // the selection has both sides
    kyUVUtils::setUseCompactMesh(true);
    RC_ASSERT(core->getIndices()->getValues() == before);
    RC_ASSERT(countOf(node) == 25U);
    for (unsigned i = 0; i < 25; ++i) {
        const Vec2f uv = core->getTexCoords()->getValue(i);
        const unsigned row = i / 5;
        RC_ASSERT(std::abs(uv[0] - static_cast<float>(i % 5)) < 2e-5F);
        RC_ASSERT(std::abs(uv[1] - static_cast<float>(row)) < 2e-5F);
    }
}

} // namespace
