#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/compactmesh/MeshTables.h"
#include "UVUtils/compactmesh/TopologySteps.h"
#include "UVUtils/compactmesh/WeldKey.h"
#include "UVUtils/editing/SewReference.h"
#include "UVUtils/editing/SewVertexLess.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

using kyUVTypes::UVSet0;

namespace
{

Ids listOf(const osg::NodePtr& node, unsigned number)
{
    const osg::GeoTmpIndexEditInterface list(coreOf(node), number);
    return {list.values().begin(), list.values().end()};
}

void setList(const osg::NodePtr& node, unsigned number, const Ids& ids)
{
    osg::GeoTmpIndexEditInterface(coreOf(node), number).assign(ids);
}

Ids bordersOf(const osg::NodePtr& node, kyUVTypes::UVSet set = UVSet0)
{
    kyUVUtils::updateBorderEdges(coreOf(node), node, set);
    return listOf(node, kyUVTypes::BorderEdges);
}

/// Some of the pairs of a list, in any order and direction, and some that are none.
Ids somePairs(const Ids& pairs, unsigned vertexCount, Random& random)
{
    Ids some;
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        if (random.oneIn(2)) {
            const unsigned swap = random.below(2);
            some.insert(some.end(), {pairs[i + swap], pairs[i + 1 - swap]});
        }
    if (random.oneIn(4))
        some.insert(some.begin(), {random.below(vertexCount), random.below(2 * vertexCount)});
    if (random.oneIn(4))
        some.push_back(0);
    return some;
}

/// Normals of a few directions, near and far, colours and a slot that differ at some vertices.
void decorate(osg::Geometry& geometry, unsigned sewnSlot, Random& random)
{
    const unsigned count = geometry.getPositions()->getSize();
    const auto normals = osg::GeoNormals3f::create();
    const auto colors = osg::GeoColors3f::create();
    const auto others = osg::GeoTexCoords3f::create();
    for (unsigned i = 0; i < count; ++i) {
        const float tilt = random.oneIn(12) ? 0.04F * static_cast<float>(random.below(3)) : 0;
        normals->addValue(osg::Vec3f(tilt, 0, 2));
        colors->addValue(osg::Color4f(random.oneIn(40) ? 1.0F : 0.0F, 0, 0, 1));
        others->addValue(osg::Vec2f(random.oneIn(40) ? 5e-4F : 0, 0));
    }
    geometry.setNormals(normals);
    geometry.setColors(colors);
    geometry.setTexSlot(sewnSlot + 1, osg::NullFC);
    geometry.setTexSlot(random.oneIn(2) ? 3 : 5, others);
}

RC_GTEST_PROP(Sew, MergesWhatLiesInOnePlaceAndKeepsTheRest, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    Random random(seed);
    const WithoutCompactMesh noMesh;
    const auto set = random.oneIn(2) ? UVSet0 : kyUVTypes::UVSet2;
    const auto slot = static_cast<unsigned>(set);
    const auto node = randomPlain(seed, set);
    const osg::GeometryPtr geometry = coreOf(node);
    const unsigned oldCount = geometry->getPositions()->getSize();
    RC_PRE(oldCount > 0);
    if (!random.oneIn(4))
        decorate(*geometry, slot, random);
    const osg::RefPtr<osg::Geometry> before(osg::dcast<osg::Geometry>(geometry->shallowCopy()));
    const Ids oldIndices = geometry->getIndices()->getValues();
    const Ids borders = bordersOf(node, set);
    RC_ASSERT(borders == bordersPlainly(oldIndices));
    const Ids selected = somePairs(borders, oldCount, random);
    setList(node, kyUVTypes::SelectedEdges, selected);
    setList(node, kyUVTypes::FreeVertices, Ids{0, oldCount - 1});
    Ids sewn;
    kyUVUtils::filterEdgesOnBorder(geometry, node, set, selected.data(),
                                   static_cast<unsigned>(selected.size()), sewn);
    const Ids lowest = sewPlainly(geometry, slot, borders, sewn, false);

    kyTopologyBridge bridge;
    kyUVUtils::sewAlongEdges(geometry, node, set, &bridge);

    Ids kept;
    Ids oldToNew;
    for (unsigned v = 0; v < oldCount; ++v) {
        oldToNew.push_back(lowest[v] == v ? static_cast<unsigned>(kept.size())
                                          : oldToNew[lowest[v]]);
        if (lowest[v] == v)
            kept.push_back(v);
    }
    const auto& record = *bridge.getImpl();
    if (sewn.empty()) {
        RC_ASSERT(record.next.shuffle.empty() && geometry->getIndices() == before->getIndices());
        return;
    }
    RC_ASSERT(record.next.shuffle == kept);
    RC_ASSERT(record.prev.shuffle == oldToNew);
    RC_ASSERT(record.prev.indices->getValues() == oldIndices);
    Ids expected = oldIndices;
    for (unsigned& id : expected)
        id = oldToNew[id];
    RC_ASSERT(geometry->getIndices()->getValues() == expected);
    RC_ASSERT(record.next.indices->getValues() == expected);
    RC_ASSERT(listOf(node, kyUVTypes::FreeVertices).front() == 0U);
    for (unsigned v = 0; v < kept.size(); ++v) {
        RC_ASSERT(geometry->getPositions()->getValue(v) ==
                  before->getPositions()->getValue(kept[v]));
        RC_ASSERT(geometry->getNormals()->getValue(v) == before->getNormals()->getValue(kept[v]));
        if (!geometry->getTexSlot(slot))
            continue;
        osg::Vec2f sum;
        float count = 0;
        for (unsigned old = 0; old < oldCount; ++old)
            if (lowest[old] == kept[v]) {
                sum += before->getTexSlot(slot)->getValue(old);
                ++count;
            }
        RC_ASSERT(geometry->getTexSlot(slot)->getValue(v) == sum * (1.0F / count));
    }
}

TEST(Sew, ComparesEachSlotAsItsUseAllows)
{
    const struct
    {
        unsigned sewn;
        bool matchUVs;
        unsigned slot;
        float step; ///< that two vertices differ by in the last component
        bool isOnePlace;
    } cases[] = {{0, false, 0, 9, true},     {0, true, 0, 9e-5F, true},  {0, true, 0, 2e-4F, false},
                 {1, false, 1, 9, true},     {1, true, 1, 9e-5F, true},  {1, true, 1, 2e-4F, false},
                 {2, false, 2, 9, true},     {2, false, 1, 9, true},     {2, true, 1, 9e-5F, true},
                 {2, true, 1, 2e-4F, false}, {2, true, 2, 1e-6F, false}, {5, false, 5, 9, true},
                 {5, true, 5, 9e-4F, true},  {0, false, 5, 2e-3F, false}};
    for (const auto& c : cases) {
        const osg::RefPtr<osg::Geometry> geometry(osg::Geometry::create());
        const auto values = osg::GeoTexCoords4f::create();
        values->resize(2);
        values->getData()[1][3] = c.step;
        geometry->setTexSlot(c.slot, values);
        const SewVertexLess isLess(*geometry, static_cast<kyUVTypes::UVSet>(c.sewn), c.matchUVs);
        EXPECT_EQ(!isLess(0, 1) && !isLess(1, 0), c.isOnePlace)
            << "sewn " << c.sewn << ", slot " << c.slot << ", step " << c.step;
    }
}

TEST(Sew, TellsOfItsWritesInTheirOrderAlsoWhereNothingMerges)
{
    const WithoutCompactMesh noMesh;
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const osg::GeometryPtr core = coreOf(node);
    const auto narrow = osg::GeoIndicesUI16::create();
    narrow->setValues(core->getIndices()->getValues());
    core->setIndices(narrow);
    core->getPositions()->resize(70000); // does not concern the indices
    core->setTexSlot(0, tiny::texCoords(UVs(70000)));
    setList(node, kyUVTypes::SelectedEdges, Ids{0, 1});
    tiny::NoticeJournal journal;
    std::vector<tiny::NoticeJournal::Notice> expected;
    const std::initializer_list<osg::FieldContainerPtr> watched{core->getPositions(),
                                                                core->getTexCoords(), core, narrow};
    std::for_each(watched.begin(), watched.end(), [&](const auto& each) { journal.watch(each); });
    for (const unsigned i : {1U, 0U, 1U, 2U, 3U, 2U})
        expected.push_back({watched.begin()[i]->getId(), osg::FieldMask::all(), 1});
    expected[3].mask = osg::Geometry::PositionsFieldMask | osg::Geometry::texSlotFieldMask(0);
    kyUVUtils::sewAlongEdges(core, node, UVSet0, nullptr);
    EXPECT_EQ(journal.notices, expected);
}

/// Makes charts unequal, so that no two means are the same by chance.
void bendUVs(const osg::NodePtr& node)
{
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(node), node, UVSet0, uvs);
    for (osg::Vec2f& uv : uvs)
        uv = osg::Vec2f(uv[0] * uv[0] + uv[1], uv[1]);
    kyUVUtils::setUVValues(coreOf(node), node, UVSet0, uvs);
}

/// Does no vertex of the mesh nearly meet another in position and UV?
bool areVerticesDistinct(const osg::NodePtr& node)
{
    const osg::GeometryPtr mesh = meshOf(node)->getGeomPtr();
    std::vector<WeldKey> keys;
    for (unsigned v = 0; v < mesh->getPositions()->getSize(); ++v)
        keys.push_back({mesh->getPositions()->getValue(v), mesh->getTexCoords()->getValue(v)});
    const auto isNearKey = [](const WeldKey& a, const WeldKey& b) {
        return isNear(a.position, b.position) && isNear(a.uv[0], b.uv[0]) &&
               isNear(a.uv[1], b.uv[1]);
    };
    for (auto a = keys.begin(); a != keys.end(); ++a)
        if (std::any_of(keys.begin(), a, [&](const WeldKey& b) { return isNearKey(*a, b); }))
            return false;
    return true;
}

RC_GTEST_PROP(Sew, LeavesTheMeshThatAFreshBuildWouldMake, ())
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    Random random(seed);
    const auto shell = randomManifoldShell(seed);
    bendUVs(shell);
    const Ids borders = bordersOf(shell);
    RC_PRE(!borders.empty());
    setList(shell, kyUVTypes::SelectedEdges, somePairs(borders, borders.back(), random));
    kyTopologyBridge bridge;
    kyUVUtils::sewAlongEdges(coreOf(shell), shell, UVSet0, &bridge);
    RC_PRE(
        areVerticesDistinct(shell)); // a build can weld others, where edges came to meet by chance
    steps::expectSameAsFreshBuild(shell);
}

RC_GTEST_PROP(Sew, StandsAnyMeshAndAnyNumbers, (bool isShell, bool matchUVs))
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    Random random(seed);
    ShellTraits traits;
    traits.badNumbers = true;
    const auto node =
        isShell ? randomShell(seed, UVSet0, traits) : randomPlain(seed, UVSet0, traits);
    const osg::GeometryPtr core = coreOf(node);
    setList(node, kyUVTypes::SelectedEdges, somePairs(bordersOf(node), 99, random));
    kyUVUtils::sewAlongEdges(core, node, UVSet0, nullptr);
    setList(node, kyUVTypes::IslandTriangles, somePairs(trianglesOf(node), 99, random));
    kyUVUtils::sewSelectedIslands(core, node, UVSet0, false, matchUVs, nullptr);
    kyUVUtils::sewAllIslands(core, node, UVSet0, random.oneIn(2), matchUVs, nullptr);
    for (const ActiveSurface& surface : activeSurfaces(node)) {
        RC_ASSERT(kyUVUtils::isValidGeometry(surface.geometry, surface.node, false));
        RC_ASSERT(surface.geometry->getNormals()->getSize() == surface.vertexCount);
    }
    RC_ASSERT(meshOf(node)->getVertFToC().size() == vertexCountOf(activeSurfaces(node)));
}

} // namespace
