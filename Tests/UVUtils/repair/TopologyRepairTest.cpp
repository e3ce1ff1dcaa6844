#include "UVUtils/repair/kyTopologyRepair.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/TempIndexList.h"
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

/// Fixes what is found until nothing is; `step` is told after each fix, with its record.
template <class Step>
void repairAll(const osg::GeometryPtr& geometry, const Step& step)
{
    for (bool isFound = true; isFound;) {
        kyTopologyRepair repair(geometry, slot);
        kyTopologyBridge ofVertices, ofEdges;
        const Ids vertices = repair.findSingularVertices();
        repair.fixSingularVertices(vertices, &ofVertices);
        if (!vertices.empty())
            step(ofVertices);
        const FlatEdgeList edges = repair.findSingularEdges();
        repair.fixSingularEdges(edges, &ofEdges);
        if (!edges.empty())
            step(ofEdges);
        isFound = !vertices.empty() || !edges.empty();
    }
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
        Ids groupOf(ids.size() / 3);
        std::iota(groupOf.begin(), groupOf.end(), 0U);
        for (const auto& [edge, triangles] : trianglesOfEdge) {
            if (triangles.size() > 2)
                edges.insert(edges.end(), {edge.first, edge.second});
            for (const unsigned t : triangles)
                std::replace(groupOf.begin(), groupOf.end(), unsigned{groupOf[t]},
                             unsigned{groupOf[triangles[0]]});
        }
        std::map<unsigned, std::set<unsigned>> groupsOfVertex;
        for (unsigned i = 0; i < ids.size(); ++i)
            groupsOfVertex[ids[i]].insert(groupOf[i / 3]);
        for (const auto& [vertex, groups] : groupsOfVertex)
            if (groups.size() > 1)
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
        unsigned countAfterAll; ///< vertices once nothing is found; 0 for what the fans decide
    } cases[] = {
        {"bow-tie", 5, {3, 0, 4, 0, 1, 2}, {0}, {}, {3, 0, 4, 5, 1, 2}, 6},
        {"three groups", 7, {0, 1, 2, 0, 3, 4, 5, 0, 6}, {0}, {}, {0, 1, 2, 7, 3, 4, 5, 8, 6}, 9},
        {"ring", 6, {5, 1, 2, 2, 3, 4, 4, 0, 5}, {2, 4, 5}, {}, {5, 1, 2, 6, 3, 4, 7, 0, 8}, 9},
        {"an edge of two", 4, {0, 1, 2, 1, 0, 3}, {}, {}, {}, 4},
        {"an edge of three", 5, {1, 0, 2, 0, 1, 3, 0, 1, 4}, {}, {0, 1}, {}, 9},
        {"an edge of five", 7, {1, 0, 2, 0, 1, 3, 0, 1, 4, 5, 0, 1, 1, 0, 6}, {}, {0, 1}, {}, 15},
        {"two solids at an edge", 6, solids, {}, {0, 1}, {}, 0},
        {"a vertex of no triangle", 5, {0, 1, 2}, {}, {}, {}, 5},
        {"a triangle of one vertex", 1, {0, 0, 0}, {}, {0, 0}, {}, 3},
        {"a folded triangle beside another", 3, {0, 0, 1, 0, 1, 2}, {}, {0, 1}, {}, 5},
        {"no triangles", 3, {}, {}, {}, {}, 3},
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
        repairAll(geometry, [](const kyTopologyBridge&) {});
        const std::size_t count = positionsOf(geometry).size();
        EXPECT_EQ(count, c.countAfterAll == 0 ? count : c.countAfterAll);
    }
}

RC_GTEST_PROP(TopologyRepair, OfAnySoupEndsWithNothingSingularAndReplays, ())
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(randomSoup()));
    const osg::GeometryPtr geometry = coreOf(node);
    const auto cornersOf = [&] {
        std::vector<osg::Pnt3f> corners;
        for (const unsigned id : indicesOf(geometry))
            corners.push_back(geometry->getPositions()->getValue(id));
        return corners;
    };
    const Singular expected(indicesOf(geometry));
    kyTopologyRepair repair(geometry, slot);
    RC_ASSERT(repair.findSingularVertices() == expected.vertices);
    RC_ASSERT(repair.findSingularEdges() == expected.edges);

    const auto stateNow = [&] { return std::pair(indicesOf(geometry), positionsOf(geometry)); };
    const auto corners = cornersOf();
    std::vector states{stateNow()};
    std::deque<kyTopologyBridge> bridges;
    repairAll(geometry, [&](const kyTopologyBridge& bridge) {
        RC_ASSERT(positionsOf(geometry).size() > states.back().second.size());
        bridges.push_back(bridge);
        states.push_back(stateNow());
    });
    const Singular left(indicesOf(geometry));
    RC_ASSERT(left.vertices.empty() && left.edges.empty());
    RC_ASSERT(cornersOf() == corners);
    const std::size_t vertexCount = states.back().second.size();
    RC_ASSERT(vertexCount <= corners.size() + states.front().second.size());
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
        nodeOf(geometryOf(std::vector<osg::Pnt3f>(65536), {0, 1, 2, 0, 3, 4})));
    const osg::GeometryPtr geometry = coreOf(node);
    const auto narrow = osg::GeoIndicesUI16::create();
    narrow->setValues(indicesOf(geometry));
    geometry->setIndices(narrow);
    ASSERT_TRUE(CompactShellMesh::getCMesh(geometry, node, slot));
    osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::SelectedEdges).assign(Ids{0, 3});
    setUVConstraints(geometry, {{{0, 4}, {}}});
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    kyTopologyBridge bridge;
    kyTopologyRepair repair(geometry, slot);
    repair.fixSingularVertices(repair.findSingularVertices(), &bridge);

    EXPECT_EQ(indicesOf(geometry), (Ids{0, 1, 2, 65536, 3, 4})) << "needs wider indices";
    EXPECT_TRUE(osg::dcast<osg::GeoIndicesUI16>(bridge.getImpl()->prev.indices));
    EXPECT_TRUE(bridge.getImpl()->prev.uvConstraints.empty());
    EXPECT_EQ(journal.notices.back().mask, osg::Geometry::IndicesFieldMask);
    const auto selected =
        osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::SelectedEdges).values();
    EXPECT_EQ(Ids(selected.begin(), selected.end()), (Ids{0, 3}));
    EXPECT_EQ(getUVConstraints(geometry).front(), (UVConstraintData{{0, 4}, {}}));
}

TEST(TopologyRepair, OfWhatIsGoneOrWasChangedFindsNothingNew)
{
    osg::RefPtr<osg::Geometry> geometry(
        geometryOf(std::vector<osg::Pnt3f>(7), {0, 1, 2, 0, 3, 4, 0, 5, 6}));
    kyTopologyRepair stale(geometry, slot);
    EXPECT_EQ(stale.findSingularVertices(), Ids{0});
    geometry->setIndices(tiny::indices({0, 1, 2, 2, 1, 3}));
    geometry->getPositions()->resize(4);
    EXPECT_EQ(stale.findSingularVertices(), Ids{0}) << "changes from elsewhere aren't seen";
    stale.fixSingularVertices({3, 0, 0, 9}, nullptr);
    EXPECT_TRUE(stale.findSingularVertices().empty()) << "a fix makes it look again";
    kyTopologyRepair outlives(geometry, slot);
    geometry = osg::RefPtr<osg::Geometry>();
    outlives = stale;
    for (kyTopologyRepair repair : {outlives, kyTopologyRepair(osg::NullFC, slot)}) {
        EXPECT_EQ(repair.fixSingularVertices() + repair.fixSingularEdges(), 0U);
        repair.fixSingularEdges({0, 1}, nullptr);
    }
}

} // namespace
