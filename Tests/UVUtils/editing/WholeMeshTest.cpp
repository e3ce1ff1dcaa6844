#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/TempIndexList.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace
{

TEST(AllEdges, AreThreeForEachTriangleLowerVertexFirst)
{
    const WithoutCompactMesh scope;
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    EXPECT_EQ(kyUVUtils::getAllEdges(coreOf(node), node, slot),
              (Ids{0, 1, 1, 2, 0, 2, 0, 2, 2, 3, 0, 3}));
}

RC_GTEST_PROP(AllEdges, ThroughAMeshNameEachEdgeByOnePairOfASurface, ())
{
    const osg::RefPtr<osg::Node> node = randomNode();
    const Ids edges = kyUVUtils::getAllEdges(coreOf(node), node, slot);
    const Ids triangles = trianglesOf(node);
    RC_ASSERT(edges.size() == 2 * triangles.size());

    std::vector<Edge> ofSurfaces;
    for (std::size_t i = 0; i < triangles.size(); i += 3)
        for (std::size_t k = 0; k < 3; ++k)
            ofSurfaces.emplace_back(triangles[i + k], triangles[i + (k + 1) % 3]);
    std::sort(ofSurfaces.begin(), ofSurfaces.end());
    std::vector<std::pair<Edge, Edge>> named; // the compact edge, and how it is named
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(coreOf(node), node, slot);
    for (std::size_t i = 0; i < edges.size(); i += 2) {
        const Edge edge(edges[i], edges[i + 1]);
        RC_ASSERT(std::binary_search(ofSurfaces.begin(), ofSurfaces.end(), edge));
        named.emplace_back(mesh->mapEdgeFToC(edge), edge);
    }
    std::sort(named.begin(), named.end());
    for (std::size_t i = 1; i < named.size(); ++i)
        if (named[i].first == named[i - 1].first)
            RC_ASSERT(named[i].second == named[i - 1].second);
}

RC_GTEST_PROP(AllVertices, CountOverTheActiveSurfacesAndStandInTheirList, ())
{
    const osg::RefPtr<osg::Node> node = randomNode();
    const osg::GeometryPtr core = coreOf(node);
    osg::GeoTmpIndexEditInterface list(core, kyUVTypes::AllVertices);
    list.setType(osg::GeoPrimitive::Triangles);
    const ActiveSurface last = activeSurfaces(node).back();
    Ids expected(last.firstId + last.vertexCount);
    std::iota(expected.begin(), expected.end(), 0U);
    RC_ASSERT(kyUVUtils::getAllVertices(core, node) == expected);
    RC_ASSERT(list.getType() == osg::GeoPrimitive::Points);
    RC_ASSERT(Ids(list.values().begin(), list.values().end()) == expected);

    const unsigned int stamp = list.getStamp();
    kyUVUtils::makeIndexForAllVertices(core, node);
    RC_ASSERT(list.getStamp() == stamp);
    list.addValue(7);
    kyUVUtils::makeIndexForAllVertices(core, node);
    RC_ASSERT(Ids(list.values().begin(), list.values().end()) == expected);
}

TEST(AllVertices, OfANodeWithoutGeometryAreNone)
{
    const osg::RefPtr<osg::Geometry> core(quad());
    kyUVUtils::makeIndexForAllVertices(core, osg::RefPtr<osg::Node>(osg::Node::create()));
    const osg::GeoTmpIndexEditInterface list(core, kyUVTypes::AllVertices);
    EXPECT_FALSE(list.isNull());
    EXPECT_EQ(list.getSize(), 0U);
}

} // namespace
