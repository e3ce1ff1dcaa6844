#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/compactmesh/MeshTables.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/editing/SewReference.h"
#include "UVUtils/model/TempIndexList.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>

using kyUVTypes::UVSet0;

namespace
{

osg::GeoTmpIndexEditInterface borderList(const osg::NodePtr& node)
{
    return {coreOf(node), kyUVTypes::BorderEdges};
}

/// Was the list made anew, rather than left as it was?
bool isMadeAnew(const osg::NodePtr& node, kyUVTypes::UVSet set = UVSet0)
{
    const unsigned stamp = borderList(node).getStamp();
    kyUVUtils::updateBorderEdges(coreOf(node), node, set);
    return borderList(node).getStamp() != stamp;
}

RC_GTEST_PROP(BorderList, NamesEachBorderOfTheMeshByOnePairOnOneSurface, ())
{
    const auto node = randomNode();
    kyUVUtils::updateBorderEdges(coreOf(node), node, slot);
    const auto ids = borderList(node).values();
    const Ids list(ids.begin(), ids.end());
    RC_ASSERT(borderList(node).getType() == unsigned{osg::GeoPrimitive::Lines});
    const CompactShellMesh& mesh = *meshOf(node);
    std::multiset<Edge> named;
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < list.size(); i += 2) {
        RC_ASSERT(list[i] <= list[i + 1]);
        edges.emplace_back(list[i], list[i + 1]);
        named.insert(mesh.mapEdgeFToC(edges.back()));
    }
    RC_ASSERT(std::is_sorted(edges.begin(), edges.end()));
    const Ids borders = bordersPlainly(mesh.getGeomPtr()->getIndices()->getValues());
    std::multiset<Edge> expected;
    for (std::size_t i = 0; i < borders.size(); i += 2)
        expected.emplace(borders[i], borders[i + 1]);
    RC_ASSERT(named == expected);
}

TEST(BorderList, IsMadeAnewOnlyWhenTrianglesHaveChanged)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::RefPtr<osg::Node> plain(nodeOf(quad()));
    for (const osg::NodePtr& node : {shell.get(), plain.get()}) {
        SCOPED_TRACE(node == plain ? "plain" : "shell");
        const osg::GeometryPtr surface = node == plain ? coreOf(node) : surfaceOf(node, 1);
        EXPECT_TRUE(isMadeAnew(node));
        EXPECT_FALSE(isMadeAnew(node));
        kyUVUtils::setLocalUVs(surface, UVSet0, UVs(4, osg::Vec2f(1, 1)));
        EXPECT_FALSE(isMadeAnew(node)) << "UVs are no triangles";
        osg::notifyChanged(surface, osg::Geometry::IndicesFieldMask);
        EXPECT_TRUE(isMadeAnew(node)) << "a surface has changed";
        osg::notifyChanged(meshOf(node)->getGeomPtr(), osg::Geometry::IndicesFieldMask);
        EXPECT_TRUE(isMadeAnew(node)) << "the mesh has changed";
        EXPECT_TRUE(isMadeAnew(node, kyUVTypes::UVSet1));
        EXPECT_TRUE(isMadeAnew(node));
        osg::GeoTmpIndexEditInterface::setNullforAll(coreOf(node));
        EXPECT_TRUE(isMadeAnew(node));
        EXPECT_FALSE(isMadeAnew(node));
        const WithoutCompactMesh noMesh;
        EXPECT_TRUE(isMadeAnew(node)) << "the application has turned the mesh off";
    }
}

TEST(BorderList, CountsAsUpToDateWhereNoneCanBeMade)
{
    const osg::RefPtr<osg::Node> node(nodeOf(brokenQuad()));
    borderList(node).assign(Ids{7, 8});
    EXPECT_FALSE(isMadeAnew(node));
    coreOf(node)->setIndices(tiny::indices({0, 1, 2}));
    EXPECT_FALSE(isMadeAnew(node)) << "nobody has told of the new triangles";
    osg::notifyChanged(coreOf(node), osg::Geometry::IndicesFieldMask);
    EXPECT_TRUE(isMadeAnew(node));
    kyUVUtils::updateBorderEdges(osg::NullFC, osg::NullFC, UVSet0);
    kyUVUtils::updateBorderEdges(coreOf(node), osg::NullFC, UVSet0);
}

TEST(BorderList, OfAClosedSurfaceIsEmptyAndNotNull)
{
    const osg::RefPtr<osg::Node> node(nodeOf(geometryOf(
        {osg::Pnt3f(0, 0, 0), osg::Pnt3f(1, 0, 0), osg::Pnt3f(0, 1, 0), osg::Pnt3f(0, 0, 1)},
        {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3})));
    EXPECT_TRUE(isMadeAnew(node));
    EXPECT_FALSE(borderList(node).isNull());
    EXPECT_EQ(borderList(node).getSize(), 0U);
    EXPECT_FALSE(isMadeAnew(node));
}

TEST(BorderList, ARecordOutlivesTheGeometriesThatItStandsUnder)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    EXPECT_TRUE(isMadeAnew(shell));
    shell->subChild(shell->getChild(1)); // dies
    EXPECT_TRUE(isMadeAnew(shell)) << "what it was made from is no more";
    EXPECT_FALSE(isMadeAnew(shell));
}

TEST(EdgeLists, BecomeVerticesAndUnions)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const osg::GeoTmpIndexEditInterface vertices(coreOf(node), kyUVTypes::SelectedEdgeVertices);
    kyUVUtils::updateEdgeVSet(coreOf(node));
    EXPECT_FALSE(vertices.isNull());
    EXPECT_EQ(vertices.getSize(), 0U);
    osg::GeoTmpIndexEditInterface(coreOf(node), kyUVTypes::SelectedEdges).assign(Ids{9, 7, 7, 3});
    kyUVUtils::updateEdgeVSet(coreOf(node));
    EXPECT_EQ(Ids(vertices.values().begin(), vertices.values().end()), (Ids{3, 7, 9}));

    const struct
    {
        Ids a, b, merged;
    } cases[] = {{{1, 2}, {2, 1, 3, 4}, {1, 2, 3, 4}},
                 {{5, 1}, {}, {5, 1}},
                 {{}, {5, 1, 1, 5}, {5, 1, 1, 5}},
                 {{4, 3, 9}, {2, 1}, {1, 2, 3, 4}}};
    for (const auto& c : cases) {
        Ids merged{77};
        kyUVUtils::mergeEdgeSet(c.a.data(), static_cast<unsigned>(c.a.size()), c.b.data(),
                                static_cast<unsigned>(c.b.size()), merged);
        EXPECT_EQ(merged, c.merged);
    }
}

} // namespace
