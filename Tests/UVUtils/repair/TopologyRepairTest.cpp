#include "UVUtils/repair/kyTopologyRepair.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace
{

Ids indicesOf(const osg::GeometryPtr& geometry)
{
    return geometry->getIndices()->getValues();
}

std::vector<osg::Pnt3f> positionsOf(const osg::GeometryPtr& geometry)
{
    return geometry->getPositions()->getValues();
}

/// What is singular, in the plainest way.
struct Singular
{
    Ids vertices;
    FlatEdgeList edges;

    explicit Singular(const Ids& ids)
    {
        std::map<Edge, Ids> trianglesOfEdge;
        for (unsigned i = 0; i < ids.size(); ++i)
            trianglesOfEdge[Edge(ids[i], ids[i % 3 == 2 ? i - 2 : i + 1])].push_back(i / 3);
        Ids groups(ids.size() / 3);
        std::iota(groups.begin(), groups.end(), 0U);
        for (const auto& [edge, triangles] : trianglesOfEdge) {
            if (triangles.size() > 2)
                edges.insert(edges.end(), {edge.first, edge.second});
            for (const unsigned t : triangles)
                std::replace(groups.begin(), groups.end(), unsigned{groups[t]},
                             unsigned{groups[triangles[0]]});
        }
        std::map<unsigned, std::set<unsigned>> groupsOfVertex;
        for (unsigned i = 0; i < ids.size(); ++i)
            groupsOfVertex[ids[i]].insert(groups[i / 3]);
        for (const auto& [vertex, itsGroups] : groupsOfVertex)
            if (itsGroups.size() > 1)
                vertices.push_back(vertex);
    }
};

TEST(TopologyRepair, FindsAndFixesAsTold)
{
    const Ids solids{0, 1, 2, 0, 2, 3, 0, 3, 1, 1, 3, 2, 0, 1, 4, 0, 4, 5, 0, 5, 1, 1, 5, 4};
    const struct Case
    {
        const char* name;
        unsigned vertexCount;
        Ids indices;
        Ids vertices;
        FlatEdgeList edges;
        Ids afterVertices;      ///< indices after one fix of the vertices
        unsigned countAfterAll; ///< vertices once nothing is found
    } cases[] = {
        {"bow-tie", 5, {3, 0, 4, 0, 1, 2}, {0}, {}, {3, 0, 4, 5, 1, 2}, 6},
        {"three groups", 7, {0, 1, 2, 0, 3, 4, 5, 0, 6}, {0}, {}, {0, 1, 2, 7, 3, 4, 5, 8, 6}, 9},
        {"ring",
         60,
         {5, 1, 2, 2, 3, 4, 5, 0, 4},
         {2, 4, 5},
         {},
         {5, 1, 2, 60, 3, 4, 62, 0, 61},
         63},
        {"an edge of three", 5, {1, 0, 2, 0, 1, 3, 0, 1, 4}, {}, {0, 1}, {}, 9},
        {"an edge of five", 7, {1, 0, 2, 0, 1, 3, 0, 1, 4, 5, 0, 1, 1, 0, 6}, {}, {0, 1}, {}, 15},
        {"two solids at an edge", 6, solids, {}, {0, 1}, {}, 10},
        {"a triangle of one vertex", 1, {0, 0, 0}, {}, {0, 0}, {}, 3},
        {"a folded triangle beside another", 3, {0, 0, 1, 0, 1, 2}, {}, {0, 1}, {}, 5},
        {"four indices", 5, {0, 1, 2, 0}, {}, {}, {}, 5},
        {"an index beyond the positions", 3, {0, 1, 2, 0, 3, 4}, {}, {}, {}, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const osg::RefPtr<osg::Geometry> geometry(
            geometryOf(std::vector<osg::Pnt3f>(c.vertexCount), c.indices));
        kyTopologyRepair repair(geometry, slot);
        repair.fixSingularVertices({0}, nullptr);
        EXPECT_EQ(indicesOf(geometry), c.indices) << "a fix without a find";
        EXPECT_EQ(repair.findSingularEdges(), c.edges);
        EXPECT_EQ(repair.findSingularVertices(), c.vertices);
        EXPECT_EQ(repair.fixSingularVertices(), c.vertices.size());
        EXPECT_EQ(indicesOf(geometry), c.afterVertices.empty() ? c.indices : c.afterVertices);
        EXPECT_EQ(repair.fixSingularEdges(), c.edges.size() / 2);
        while (repair.fixSingularVertices() + repair.fixSingularEdges() > 0) {
        }
        EXPECT_EQ(positionsOf(geometry).size(), c.countAfterAll);
    }
}

RC_GTEST_PROP(TopologyRepair, OfAnySoupEndsWithNothingSingularAndReplays, ())
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(randomSoup()));
    const osg::GeometryPtr geometry = coreOf(node);
    const auto stateNow = [&] { return std::pair(indicesOf(geometry), positionsOf(geometry)); };
    std::vector states{stateNow()};
    std::deque<kyTopologyBridge> bridges;
    kyTopologyRepair repair(geometry, slot);
    for (;;) {
        const Singular expected(states.back().first);
        RC_ASSERT(repair.findSingularVertices() == expected.vertices);
        RC_ASSERT(repair.findSingularEdges() == expected.edges);
        if (expected.vertices.empty() && expected.edges.empty())
            break;
        if (expected.vertices.empty())
            repair.fixSingularEdges(expected.edges, &bridges.emplace_back());
        else
            repair.fixSingularVertices(expected.vertices, &bridges.emplace_back());
        states.push_back(stateNow());
        const auto& [oldIds, oldPositions] = states.end()[-2];
        const auto& [ids, positions] = states.back();
        RC_ASSERT(positions.size() > oldPositions.size());
        for (std::size_t i = 0; i < ids.size(); ++i)
            RC_ASSERT(positions[ids[i]] == oldPositions[oldIds[i]]);
    }
    for (std::size_t step = bridges.size(); step-- > 0;) {
        kyUVUtils::applyTopology(geometry, node, slot, bridges[step].getPrev());
        RC_ASSERT(stateNow() == states[step]);
    }
    for (std::size_t step = 0; step < bridges.size(); ++step) {
        kyUVUtils::applyTopology(geometry, node, slot, bridges[step].getNext());
        RC_ASSERT(stateNow() == states[step + 1]);
    }
}

TEST(TopologyRepair, OfVerticesTellsAMeshAndKeepsWhatNamesVertices)
{
    const osg::RefPtr<osg::Node> node(
        nodeOf(geometryOf(std::vector<osg::Pnt3f>(5), {0, 1, 2, 0, 3, 4})));
    const osg::GeometryPtr geometry = coreOf(node);
    ASSERT_TRUE(CompactShellMesh::getCMesh(geometry, node, slot)) << "it drops lists when told";
    osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::FreeVertices).assign(Ids{0, 3});
    setUVConstraints(geometry, {{{0, 4}, {}}});
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    journal.watch(geometry->getIndices());
    kyTopologyBridge bridge;
    kyTopologyRepair repair(geometry, slot);
    repair.fixSingularVertices(repair.findSingularVertices(), &bridge);
    EXPECT_TRUE(bridge.getImpl()->prev.uvConstraints.empty());
    ASSERT_GE(journal.notices.size(), 2U);
    EXPECT_EQ(journal.notices.end()[-2].id, geometry->getIndices()->getId());
    EXPECT_EQ(journal.notices.back().mask, osg::Geometry::IndicesFieldMask);
    EXPECT_EQ(osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::FreeVertices).getSize(), 2U);
    EXPECT_EQ(getUVConstraints(geometry).front(), (UVConstraintData{{0, 4}, {}}));
}

TEST(TopologyRepair, OfEdgesMovesUVsApartInItsSlotOnly)
{
    const osg::RefPtr<osg::Geometry> geometry(
        geometryOf(std::vector<osg::Pnt3f>(5), {1, 0, 2, 0, 1, 3, 0, 1, 4}));
    UVs uvs;
    for (const float u : {0.F, 1.F, 2.F, 3.F, 4.F})
        uvs.emplace_back(u, u * u);
    geometry->setTexSlot(0, tiny::texCoords(uvs));
    geometry->setTexSlot(1, tiny::texCoords(uvs));
    kyTopologyRepair(geometry, kyUVTypes::UVSet1).fixSingularEdges();
    const UVs kept = uvSlot(geometry, kyUVTypes::UVSet0)->getValues();
    const UVs moved = uvSlot(geometry, kyUVTypes::UVSet1)->getValues();
    for (const unsigned vertex : {0U, 5U, 6U}) {
        EXPECT_EQ(kept[vertex], uvs[0]);
        EXPECT_NEAR(moved[vertex].length(), 1.2e-5F, 1e-7F);
    }
}

TEST(TopologyRepair, OfWhatIsGoneOrWasChangedIsHarmless)
{
    osg::RefPtr<osg::Geometry> geometry(
        geometryOf(std::vector<osg::Pnt3f>(7), {0, 1, 2, 0, 3, 4, 0, 5, 6}));
    kyTopologyRepair repair(geometry, slot);
    repair.findSingularVertices();
    geometry->setIndices(tiny::indices({0, 1, 2, 2, 1, 3}));
    geometry->getPositions()->resize(4);
    EXPECT_EQ(repair.findSingularVertices(), Ids{0}) << "changes from elsewhere aren't seen";
    repair.fixSingularVertices({3, 0, 0, 9}, nullptr);
    EXPECT_TRUE(repair.findSingularVertices().empty()) << "a fix makes it look again";
    geometry = osg::RefPtr<osg::Geometry>();
    EXPECT_EQ(repair.fixSingularVertices() + repair.fixSingularEdges(), 0U);
    repair.fixSingularEdges({0, 1}, nullptr);
}

} // namespace
