#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/editing/CutAlongEdges.h"
#include "UVUtils/editing/CutReference.h"
#include "UVUtils/editing/EdgeTriangles.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numeric>

namespace
{

unsigned countOf(const osg::GeometryPtr& geometry)
{
    return geometry->getPositions()->getSize();
}

Ids indicesOf(const osg::GeometryPtr& geometry)
{
    return geometry->getIndices()->getValues();
}

void select(const osg::GeometryPtr& geometry, const Ids& edges)
{
    osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::SelectedEdges).assign(edges);
}

/// Mostly edges of the mesh, in either direction; some pairs that are none, and maybe an id more.
Ids randomEdges(const Ids& triangles, unsigned idCount)
{
    const auto size = static_cast<unsigned>(triangles.size());
    Ids edges;
    for (auto count = *rc::gen::inRange(1, 12); count > 0; --count) {
        const unsigned corner = size == 0 ? 0 : *rc::gen::inRange(0U, size);
        const unsigned next = corner % 3 == 2 ? corner - 2 : corner + 1;
        Ids pair = size == 0 || *rc::gen::inRange(0, 8) == 0
                       ? *rc::gen::container<Ids>(2, rc::gen::inRange(0U, idCount + 2))
                       : Ids{triangles[corner], triangles[next]};
        if (*rc::gen::arbitrary<bool>())
            std::swap(pair[0], pair[1]);
        edges.insert(edges.end(), pair.begin(), pair.end());
    }
    if (*rc::gen::arbitrary<bool>())
        edges.push_back(0);
    return edges;
}

void expectListsInRange(const osg::GeometryPtr& geometry, unsigned idCount)
{
    for (const unsigned number : osg::GeoTmpIndexEditInterface::listsWithContent(geometry))
        for (const unsigned id : osg::GeoTmpIndexEditInterface(geometry, number).values())
            RC_ASSERT(id < idCount);
    for (const UVConstraintData& data : getUVConstraints(geometry))
        for (const unsigned id : data.edgesU)
            RC_ASSERT(id < idCount);
}

/// A fan of very many triangles around vertex 0, in any order and winding, and some that cross it.
osg::GeometryPtr randomPole(unsigned count)
{
    std::vector<osg::Pnt3f> positions(count + 1);
    std::vector<Ids> triangles;
    for (unsigned i = 0; i < count; ++i) {
        triangles.push_back({0, i + 1, (i + 1) % count + 1});
        if (i % 50 == 0)
            triangles.push_back({i + 1, (7 * i) % count + 1, 0});
    }
    Random random(*rc::gen::arbitrary<std::uint32_t>());
    Ids ids;
    for (std::size_t left = triangles.size(); left > 0; --left) {
        std::swap(triangles[left - 1], triangles[random.below(static_cast<unsigned>(left))]);
        const Ids& corners = triangles[left - 1];
        for (unsigned k = 0, first = random.below(3); k < 3; ++k)
            ids.push_back(corners[(first + (left % 2 == 0 ? k : 3 - k)) % 3]);
    }
    return geometryOf(positions, ids);
}

RC_GTEST_PROP(Cut, FindsTheFansAtAPoleInAnyOrder, ())
{
    const osg::RefPtr<osg::Geometry> pole(randomPole(*rc::gen::inRange(3U, 200U)));
    const Ids before = indicesOf(pole);
    const unsigned count = countOf(pole);
    const Ids edges = randomEdges(before, count);
    const CutReference expected(before, count, edges, UVs(count));
    doCutAlongEdges(pole, edges.data(), static_cast<unsigned>(edges.size()), true, slot, nullptr);
    RC_ASSERT(indicesOf(pole) == expected.indices);
}

TEST(Cut, OfAShellMapsWhatItsSurfacesNameAndNotWhatItNamesItself)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::GeometryPtr first = surfaceOf(shell, 0);
    select(coreOf(shell), {0, 2, 5, 6});
    select(first, {1, 2, 2, 0});
    setUVConstraints(first, {{{0, 2}, {3, 2}}});
    kyUVUtils::cutAlongEdges(coreOf(shell), shell, slot, nullptr);
    const auto selected = [](const osg::GeometryPtr& geometry) {
        const auto ids = osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::SelectedEdges).values();
        return Ids(ids.begin(), ids.end());
    };
    EXPECT_EQ(selected(coreOf(shell)), (Ids{0, 2, 5, 6}));
    EXPECT_EQ(selected(first), (Ids{1, 2, 2, 0, 5, 4}));
    EXPECT_EQ(getUVConstraints(first).front(), (UVConstraintData{{0, 2, 4, 5}, {3, 5}}));
}

RC_GTEST_PROP(Cut, PartsFansOfAnyMeshAsToldAndReplays, ())
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(*rc::gen::arbitrary<bool>()
                                          ? osg::RefPtr<osg::Node>(nodeOf(randomSoup()))
                                          : randomPlain(*rc::gen::arbitrary<std::uint32_t>()));
    const osg::GeometryPtr geometry = coreOf(node);
    const Ids before = indicesOf(geometry);
    const unsigned oldCount = countOf(geometry);
    UVs uvs = kyUVUtils::getUVValuesLocal(geometry, slot);
    const bool hasUVs = !uvs.empty();
    uvs.resize(oldCount);
    const Ids edges = randomEdges(before, oldCount);
    select(geometry, edges);
    Ids all(oldCount);
    std::iota(all.begin(), all.end(), 0U);
    osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::FreeVertices).assign(all);
    setUVConstraints(geometry, {{before.size() < 3 ? Ids() : Ids{before[0], before[1]}, {}}});
    const auto constraints = getUVConstraints(geometry);

    kyTopologyBridge bridge;
    kyUVUtils::cutAlongEdges(geometry, node, slot, &bridge);
    const CutReference expected(before, oldCount, edges, uvs);
    RC_ASSERT(indicesOf(geometry) == expected.indices);
    const auto newCount = oldCount + static_cast<unsigned>(expected.sources.size());
    RC_ASSERT(countOf(geometry) == newCount);
    const auto positions = geometry->getPositions()->getValues();
    const UVs after = kyUVUtils::getUVValuesLocal(geometry, slot);
    for (unsigned v = 0; v < newCount; ++v) {
        const unsigned source = v < oldCount ? v : expected.sources[v - oldCount];
        RC_ASSERT(positions[v] == positions[source]);
        if (!hasUVs)
            continue;
        const auto shift = expected.shiftOf.find(v);
        const Vec2f direction = shift == expected.shiftOf.end() ? Vec2f() : shift->second;
        const Vec2f moved = uvs[source] + CutReference::unit(direction) * 1.1920929e-5F;
        RC_ASSERT((after[v] - moved).length() < 3e-7F);
    }
    if (newCount > oldCount)
        expectListsInRange(geometry, newCount);
    RC_ASSERT(osg::GeoTmpIndexEditInterface(geometry, kyUVTypes::FreeVertices).getSize() ==
              newCount);

    const auto constraintsAfter = getUVConstraints(geometry);
    kyUVUtils::applyTopology(geometry, node, slot, bridge.getPrev());
    RC_ASSERT(indicesOf(geometry) == before);
    RC_ASSERT(countOf(geometry) == oldCount);
    RC_ASSERT(getUVConstraints(geometry) == constraints);
    kyUVUtils::applyTopology(geometry, node, slot, bridge.getNext());
    RC_ASSERT(indicesOf(geometry) == expected.indices);
    RC_ASSERT(geometry->getPositions()->getValues() == positions);
    RC_ASSERT(getUVConstraints(geometry) == constraintsAfter);
}

TEST(Cut, OfASlitOrAlongABorderSplitsNothingAndIsRecordedAsSuch)
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const osg::GeometryPtr geometry = coreOf(node);
    kyTopologyBridge bridge;
    kyUVUtils::cutAlongEdges(geometry, node, slot, &bridge);
    EXPECT_TRUE(bridge.getImpl()->next.shuffle.empty()) << "null list";
    select(geometry, {0, 1, 3, 3, 1, 3, 7, 0, 2});
    kyUVUtils::cutAlongEdges(geometry, node, slot, &bridge);
    for (const kyTopologyData& data : {bridge.getImpl()->next, bridge.getImpl()->prev}) {
        EXPECT_EQ(data.shuffle, (Ids{0, 1, 2, 3}));
        EXPECT_EQ(data.indices->getValues(), (Ids{0, 1, 2, 0, 2, 3}));
        EXPECT_NE(data.indices, geometry->getIndices());
    }
    select(geometry, {});
    kyUVUtils::cutAlongEdges(geometry, node, slot, &bridge);
    EXPECT_TRUE(bridge.getImpl()->next.shuffle.empty()) << "a bridge is emptied first";
}

TEST(Cut, GivesWiderIndicesAndTellsOfThem)
{
    const osg::RefPtr<osg::Geometry> geometry(quad());
    const auto narrow = osg::GeoIndicesUI16::create();
    narrow->setValues(geometry->getIndices()->getValues());
    geometry->setIndices(narrow);
    geometry->getPositions()->resize(65535);
    geometry->setTexSlot(slot,
                         tiny::texCoords({Vec2f(0, 0), Vec2f(1, 0), Vec2f(1, NAN), Vec2f(0, 1)}));
    kyTopologyBridge bridge;
    TopologyOpOutData out(bridge.getImpl());
    const Ids diagonal{0, 2};
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    journal.watch(geometry->getTexSlot(slot));
    doCutAlongEdges(geometry, diagonal.data(), 2, true, slot, &out);
    EXPECT_EQ(indicesOf(geometry), (Ids{0, 1, 2, 65535, 65536, 3}));
    EXPECT_TRUE(osg::dcast<osg::GeoIndicesUI32>(geometry->getIndices()));
    EXPECT_TRUE(osg::dcast<osg::GeoIndicesUI16>(out.prevIndices->get()));
    const UVs uvs = kyUVUtils::getUVValuesLocal(geometry, slot);
    EXPECT_LT((uvs[0] - Vec2f(1.19e-5F, 0)).length(), 1e-6F) << "no way to a UV that is none";
    const auto slotMask = osg::Geometry::PositionsFieldMask | osg::Geometry::TexCoordsFieldMask;
    ASSERT_EQ(journal.notices.size(), 4U);
    EXPECT_EQ(journal.notices[1].mask, slotMask) << "copied";
    EXPECT_EQ(journal.notices[2].id, geometry->getTexSlot(slot)->getId()) << "moved apart";
    EXPECT_TRUE((journal.notices[3].mask & osg::Geometry::IndicesFieldMask).any());
}

TEST(Cut, OfAShellPassesOverPairsOfTwoSurfacesAndBeyond)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    select(coreOf(shell), {1, 6, 0, 8, 6, 4, 77});
    kyUVUtils::cutAlongEdges(coreOf(shell), shell, slot, nullptr);
    EXPECT_EQ(indicesOf(surfaceOf(shell, 0)), (Ids{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(countOf(surfaceOf(shell, 1)), 6U);
}

TEST(EdgeTriangles, StandAtEachEdge)
{
    std::unordered_map<Edge, std::vector<int>, EdgeHash> trianglesOfEdge{{Edge(7, 8), {9}}};
    fillEdgeTrianglesMap(trianglesOfEdge, quad()->getIndices());
    EXPECT_EQ(trianglesOfEdge.size(), 5U);
    EXPECT_EQ(trianglesOfEdge[Edge(2, 0)], (std::vector<int>{0, 1}));
    fillEdgeTrianglesMap(trianglesOfEdge, tiny::indices({0, 1}));
    EXPECT_TRUE(trianglesOfEdge.empty());
}

} // namespace
