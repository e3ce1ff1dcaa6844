#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/CopyUVs.h"
#include "UVUtils/compactmesh/TopologySteps.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <stdexcept>

using kyUVTypes::UVSet0;

namespace
{

UVs uvsOf(const osg::NodePtr& shell)
{
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(shell), shell, UVSet0, uvs);
    return uvs;
}

/// Shifts of distinct steps add up to distinct sums, so that nothing comes together by chance.
void doRandomStep(const osg::NodePtr& shell, unsigned int number, Random& random,
                  kyTopologyBridge& bridge)
{
    const std::vector<ActiveSurface> surfaces = activeSurfaces(shell);
    if (random.oneIn(4)) {
        steps::reverseVertices(
            shell, surfaces[random.below(static_cast<unsigned int>(surfaces.size()))], bridge);
        return;
    }
    std::vector<bool> isLifted;
    for (const ActiveSurface& surface : surfaces)
        for (unsigned int t = 0; t < surface.geometry->getIndices()->getSize() / 3; ++t)
            isLifted.push_back(random.oneIn(3));
    steps::lift(shell, isLifted, static_cast<float>(8U << number), bridge);
}

RC_GTEST_PROP(TopologySteps, LeaveTheMeshAFreshBuildWouldMakeAndReplayBitForBit, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    Random random(seed);
    const auto shell = randomManifoldShell(seed);
    const osg::GeometryPtr core = coreOf(shell);
    steps::expectSameAsFreshBuild(shell);
    const auto stepCount = random.between(1, 4);
    kyUVUtils::setUVValues(core, shell, UVSet0, uvsOf(shell)); // all have the slot from here on
    std::deque<kyTopologyBridge> bridges;
    std::vector<steps::State> states{steps::stateOf(shell)};
    std::vector<UVs> uvs{uvsOf(shell)};
    for (unsigned int number = 0; number < stepCount; ++number) {
        doRandomStep(shell, number, random, bridges.emplace_back());
        steps::expectSameAsFreshBuild(shell);
        states.push_back(steps::stateOf(shell));
        uvs.push_back(uvsOf(shell));
    }
    const auto replay = [&](void* record, std::size_t state) {
        kyUVUtils::applyTopology(core, shell, UVSet0, record);
        kyUVUtils::setUVValues(core, shell, UVSet0, uvs[state]);
        RC_ASSERT(steps::stateOf(shell) == states[state]);
    };
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = stepCount; i-- > 0;)
            replay(bridges[i].getPrev(), i);
        for (std::size_t i = 0; i < stepCount; ++i)
            replay(bridges[i].getNext(), i + 1);
    }
    steps::expectSameAsFreshBuild(shell);
}

RC_GTEST_PROP(ApplyTopology, StandsNumbersThatAreNone, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    Random random(seed);
    ShellTraits traits;
    traits.badNumbers = true;
    const auto shell = randomShell(seed, UVSet0, traits);
    RC_PRE(steps::areTrianglesDistinct(shell));
    const steps::State before = steps::stateOf(shell);
    kyTopologyBridge bridge;
    doRandomStep(shell, 0, random, bridge);
    const steps::State after = steps::stateOf(shell);
    kyUVUtils::applyTopology(coreOf(shell), shell, UVSet0, bridge.getPrev());
    RC_ASSERT(steps::stateOf(shell).indices == before.indices);
    kyUVUtils::applyTopology(coreOf(shell), shell, UVSet0, bridge.getNext());
    RC_ASSERT(steps::stateOf(shell).indices == after.indices);
}

/// The values that the active surfaces hold themselves, one surface after the other.
UVs storedUVs(const osg::NodePtr& shell)
{
    UVs uvs;
    for (const ActiveSurface& surface : activeSurfaces(shell)) {
        const UVs own = kyUVUtils::getUVValuesLocal(surface.geometry, UVSet0);
        uvs.insert(uvs.end(), own.begin(), own.end());
    }
    return uvs;
}

/// Those of surfaces that take no part, by their nodes.
std::map<unsigned int, UVs> inactiveUVs(const osg::NodePtr& shell)
{
    std::map<unsigned int, UVs> uvs;
    kyUVUtils::getNoCompactUVValues(shell, UVSet0, uvs);
    for (const ActiveSurface& surface : activeSurfaces(shell))
        uvs.erase(surface.node->getId());
    return uvs;
}

UVs randomUVs(std::size_t count)
{
    const auto coordinate = rc::gen::map(rc::gen::inRange(-50, 50),
                                         [](int step) { return static_cast<float>(step) / 4; });
    return *rc::gen::container<UVs>(count, rc::gen::construct<osg::Vec2f>(coordinate, coordinate));
}

RC_GTEST_PROP(UVViews, AgreeOnWhatIsWrittenThroughTheMesh, ())
{
    const auto shell = randomShell(*rc::gen::arbitrary<std::uint32_t>());
    const steps::State before = steps::stateOf(shell);
    const UVs start = uvsOf(shell);
    RC_PRE(!start.empty());
    const auto inactive = inactiveUVs(shell);
    const Ids ids = *rc::gen::nonEmpty(
        rc::gen::container<Ids>(rc::gen::inRange(0U, static_cast<unsigned int>(start.size()))));
    const UVs written = randomUVs(ids.size());
    kyUVUtils::setUVValues(coreOf(shell), shell, UVSet0, ids.data(),
                           static_cast<unsigned int>(ids.size()), written);

    UVs expected = start;
    for (std::size_t i = 0; i < ids.size(); ++i)
        for (const unsigned int f : before.verticesOfCompactId[before.compactIdOfVertex[ids[i]]])
            expected[f] = written[i];
    RC_ASSERT(uvsOf(shell) == expected);
    RC_ASSERT(storedUVs(shell) == expected);
    steps::State after = steps::stateOf(shell);
    after.uvs = before.uvs;
    RC_ASSERT(after == before); // nothing else was written
    RC_ASSERT(inactiveUVs(shell) == inactive);
}

RC_GTEST_PROP(UVViews, AgreeOnWhatIsWrittenToTheSurfaces, ())
{
    const auto shell = randomShell(*rc::gen::arbitrary<std::uint32_t>());
    steps::stateOf(shell); // there is a mesh to outdate
    UVs uvs;
    kyUVUtils::getNoCompactUVValues(shell, UVSet0, uvs);
    uvs = randomUVs(uvs.size());
    kyUVUtils::setNoCompactUVValues(shell, UVSet0, uvs);
    UVs all;
    kyUVUtils::getNoCompactUVValues(shell, UVSet0, all);
    RC_ASSERT(all == uvs);
    RC_ASSERT(uvsOf(shell) == storedUVs(shell));
}

class TwoQuads : public testing::Test
{
protected:
    osg::GeometryPtr left() const { return surfaceOf(shell, 0); }
    osg::GeometryPtr right() const { return surfaceOf(shell, 1); }
    CompactShellMesh& mesh() const { return *CompactShellMesh::getCMesh(core, shell, UVSet0); }

    osg::RefPtr<osg::Node> shell{twoSurfaceShell()};
    osg::GeometryPtr core = coreOf(shell);
};

TEST_F(TwoQuads, AreSixVerticesToTranslateBetween)
{
    const CompactShellMesh& both = mesh();
    EXPECT_EQ(both.getVertFToC(), (Ids{0, 2, 3, 1, 2, 4, 5, 3})) << "ascending by position";
    EXPECT_EQ(both.mapEdgeFToC(Edge(1, 4)), Edge(2, 2));

    Ids out{77};
    const Ids pairs{2, 1, 7, 5};
    both.mapEdgesFToC(pairs.data(), 4, out);
    EXPECT_EQ(out, (Ids{77, 3, 2, 3, 4})) << "pairs keep their order, results are appended";

    const Ids welded{3, 0};
    for (const bool allOfEach : {true, false}) {
        out.clear();
        both.mapVertsCToF(welded.data(), 2, out, allOfEach);
        EXPECT_EQ(out.size(), allOfEach ? 3U : 2U);
    }
    const Ids edges{0, 5, 5, 4}; // no edge, and one of the right quad
    out.clear();
    both.mapEdgesCToF(edges.data(), 4, out);
    EXPECT_EQ(out, (Ids{5, 6}));

    const Ids triangles{5, 2, 4, 0, 1, 5};
    out.clear();
    both.mapSMeshCToF(triangles.data(), 6, out);
    EXPECT_EQ(out, (Ids{4, 5, 6})) << "in winding order, and nothing for what is no triangle";
}

TEST_F(TwoQuads, ARecordWithoutShuffleAndWithFewerChildrenIsReplayedAsFarAsItGoes)
{
    kyTopologyBridge bridge;
    steps::lift(shell, {false, false, true, true}, 8, bridge);
    const steps::State after = steps::stateOf(shell);
    kyTopologyData record = *static_cast<const kyTopologyData*>(bridge.getPrev());
    record.shuffle.clear();
    kyUVUtils::applyTopology(core, shell, UVSet0, &record);
    kyUVUtils::applyTopology(core, shell, UVSet0, nullptr);
    EXPECT_TRUE(steps::stateOf(shell) == after);

    record = *static_cast<const kyTopologyData*>(bridge.getPrev());
    record.patchResize(1);
    record.childUVConstraints[0] = {UVConstraintData{{0, 1}, {}}};
    kyUVUtils::applyTopology(core, shell, UVSet0, &record);
    EXPECT_EQ(getUVConstraints(left()), record.childUVConstraints[0]);
    EXPECT_EQ(left()->getIndices()->getValues(), record.childIndices[0]->getValues());
    EXPECT_NE(left()->getIndices(), record.childIndices[0].get()) << "a clone";
    EXPECT_EQ(right()->getIndices()->getValues(), after.indices[1]);
}

TEST_F(TwoQuads, LosingASurfaceMakesTheTablesOfARecordStaleAndTheMeshBuildAnew)
{
    kyTopologyBridge bridge;
    steps::lift(shell, {false, false, true, true}, 8, bridge);
    shell->subChild(shell->getChild(1));
    kyUVUtils::applyTopology(core, shell, UVSet0, bridge.getPrev());
    EXPECT_EQ(mesh().getVertFToC(), (Ids{0, 2, 3, 1}));

    kyTopologyData record = *static_cast<const kyTopologyData*>(bridge.getPrev());
    record.shuffle = {0};
    kyUVUtils::applyTopology(core, shell, UVSet0, &record); // indices beyond the only vertex
    EXPECT_EQ(mesh().getVertFToC(), (Ids{0, 2, 3, 1}));
}

TEST_F(TwoQuads, HiddenBehindTheMeshsBackDoNotLendTheirUVsToOthers)
{
    const UVs own(4, osg::Vec2f(3, 3));
    right()->setTexSlot(0, tiny::texCoords(own));
    const CompactMeshScope scope(core, shell, UVSet0);
    shell->getChild(0)->setTravMask(0);
    EXPECT_EQ(uvsOf(shell).size(), 4U);
    scope.getMesh()->mapChanged(core, shell, nullptr);
    scope.commit();
    EXPECT_EQ(storedUVs(shell), own);
}

TEST_F(TwoQuads, AMeshThatWeldedOtherVerticesSinceIsBuiltAnewAfterAReplay)
{
    kyTopologyBridge bridge;
    steps::lift(shell, {false, false, true, true}, 8, bridge);
    kyUVUtils::setUVValues(core, shell, UVSet0, UVs(8));
    EXPECT_EQ(mesh().getGeomPtr()->getPositions()->getSize(), 8U) << "still clean";
    mesh().touch(); // what the record takes for eight vertices are six again
    EXPECT_EQ(mesh().getGeomPtr()->getPositions()->getSize(), 6U);
    kyUVUtils::applyTopology(core, shell, UVSet0, bridge.getPrev());
    const steps::State replayed = steps::stateOf(shell);
    mesh().touch();
    EXPECT_TRUE(steps::stateOf(shell) == replayed);
}

TEST_F(TwoQuads, ARecordOfAPlainGeometryNeedsNoMesh)
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    kyTopologyData record;
    record.shuffle = {3, 2, 1, 0, 0};
    record.indices = tiny::indices({3, 2, 4});
    record.uvConstraints = {UVConstraintData{{}, {2, 3}}};
    kyUVUtils::applyTopology(coreOf(node), node, UVSet0, &record);
    EXPECT_EQ(coreOf(node)->getPositions()->getSize(), 5U);
    EXPECT_EQ(coreOf(node)->getPositions()->getValue(4), osg::Pnt3f(0, 0, 0));
    EXPECT_EQ(coreOf(node)->getIndices()->getValues(), (Ids{3, 2, 4}));
    EXPECT_EQ(getUVConstraints(coreOf(node)), record.uvConstraints);
}

TEST_F(TwoQuads, AScopeTranslatesAndEndsEvenWhenAnOperationThrows)
{
    const auto throwing = [&] {
        const CompactMeshScope scope(core, shell, UVSet0);
        throw std::runtime_error("operation failed");
    };
    EXPECT_THROW(throwing(), std::runtime_error);
    kyUVUtils::setLocalUVs(left(), UVSet0, UVs(4, osg::Vec2f(1, 1)));
    EXPECT_EQ(mesh().getGeomPtr()->getPositions()->getSize(), 8U) << "notices reach the mesh again";

    osg::GeoTmpIndexEditInterface list(core, kyUVTypes::SelectedEdges);
    const CompactMeshScope scope(core, shell, UVSet0);
    EXPECT_EQ(scope.getGeometry(), mesh().getGeomPtr());
    EXPECT_EQ(scope.readTempIndices(kyUVTypes::SelectedEdges), Ids());
    list.assign(Ids{3, 0});
    EXPECT_EQ(scope.readTempIndices(kyUVTypes::SelectedEdges),
              (Ids{mesh().mapVertFToC(3), mesh().mapVertFToC(0)}));
    list.assign(Ids{3, 8});
    EXPECT_EQ(scope.readTempIndices(kyUVTypes::SelectedEdges), Ids()) << "stale";
    FlatEdgeList edges = scope.toWorkIds({Edge(3, 2), Edge(5, 9)});
    EXPECT_EQ(edges, (FlatEdgeList{mesh().mapVertFToC(2), mesh().mapVertFToC(3)}));
    scope.toCallerIds(edges);
    EXPECT_EQ(Edge(edges.at(0), edges.at(1)), Edge(2, 3));
}

TEST_F(TwoQuads, AScopeWithoutMeshPassesIdsThrough)
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    osg::GeoTmpIndexEditInterface(coreOf(node), 4).assign(Ids{2, 99});
    const CompactMeshScope scope(coreOf(node), node, UVSet0);
    EXPECT_EQ(scope.getMesh(), nullptr);
    EXPECT_EQ(scope.getGeometry(), coreOf(node));
    EXPECT_EQ(scope.readTempIndices(kyUVTypes::FreeVertices), (Ids{2, 99}));
    FlatEdgeList edges = scope.toWorkIds({Edge(3, 1)});
    scope.toCallerIds(edges);
    EXPECT_EQ(edges, (FlatEdgeList{1, 3}));
    scope.commit();
}

TEST_F(TwoQuads, CopyingGivesAMissingOrWrongSlotAndNoOther)
{
    left()->setTexSlot(0, osg::GeoTexCoords3f::create());
    right()->setTexSlot(1, tiny::texCoords(UVs(4)));
    right()->setIndexMapping({osg::Geometry::MapPosition});
    const Ids ids{0};
    kyUVUtils::setUVValues(core, shell, UVSet0, ids.data(), 1, UVs(1, osg::Vec2f(5, 6)));
    UVs expected(8);
    expected[0] = osg::Vec2f(5, 6);
    EXPECT_EQ(storedUVs(shell), expected);
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(right(), kyUVTypes::UVSet1), UVs(4));
    EXPECT_EQ(right()->getIndexMapping(), std::vector<std::uint16_t>{osg::Geometry::MapPosition});

    copyUVsToSurfaces(mesh(), core, shell, kyUVTypes::UVSet1);
    EXPECT_EQ(left()->getTexSlot(1), osg::NullFC) << "the mesh has no such slot";
}

TEST_F(TwoQuads, ASurfaceShownBehindTheMeshsBackIsNotWritten)
{
    shell->getChild(1)->setTravMask(0);
    EXPECT_EQ(mesh().getVertFToC().size(), 4U);
    shell->getChild(1)->setTravMask(1);
    kyUVUtils::setUVValues(core, shell, UVSet0, UVs(8));
    const Ids ids{5};
    UVs out;
    kyUVUtils::getUVValues(core, shell, UVSet0, ids.data(), 1, out);
    EXPECT_TRUE(out.empty());
    kyUVUtils::setUVValues(core, shell, UVSet0, UVs(4, osg::Vec2f(1, 1)));
    EXPECT_EQ(storedUVs(shell), UVs(4, osg::Vec2f(1, 1)));
    EXPECT_EQ(right()->getTexSlot(0), osg::NullFC);
    mesh().touch();
    EXPECT_EQ(mesh().getVertFToC().size(), 8U);
}

} // namespace
