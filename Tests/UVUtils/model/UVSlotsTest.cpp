#include "OpenSG/Group.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>

#include <map>

using kyUVTypes::UVSet;
using kyUVTypes::UVSet0;

namespace
{

constexpr UVSet noSlot = UVSet(9);

osg::RefPtr<osg::Geometry> heldQuad()
{
    return osg::RefPtr<osg::Geometry>(quad());
}

TEST(UVSlots, ANewPropertyHasAZeroForEachVertexAndNoPlace)
{
    const auto geometry = heldQuad();
    const osg::RefPtr<osg::GeoTexCoords2f> property(kyUVUtils::createEmptyUVSet(geometry));
    EXPECT_EQ(property->getValues(), UVs(4));
    EXPECT_EQ(geometry->getTexSlot(0), osg::NullFC);

    geometry->setPositions(osg::NullFC);
    EXPECT_EQ(kyUVUtils::createEmptyUVSet(geometry), osg::NullFC);
    EXPECT_EQ(kyUVUtils::createEmptyUVSet(osg::NullFC), osg::NullFC);
}

TEST(UVSlots, SettingOneTellsTheMappingThenThePropertyAndTheGeometry)
{
    const auto geometry = heldQuad();
    geometry->setIndexMapping({osg::Geometry::MapPosition});
    const osg::RefPtr<osg::GeoTexCoords> property(tiny::texCoords(UVs(4)));
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    journal.watch(property);

    EXPECT_TRUE(kyUVUtils::setTexSlot(geometry, kyUVTypes::UVSet3, property));
    EXPECT_EQ(geometry->getTexCoords3(), property.get());
    EXPECT_EQ(
        geometry->getIndexMapping(),
        std::vector<std::uint16_t>{osg::Geometry::MapPosition | osg::Geometry::MapTexCoords3});
    using Notice = tiny::NoticeJournal::Notice;
    EXPECT_EQ(journal.notices,
              (std::vector<Notice>{{geometry->getId(), osg::Geometry::IndexMappingFieldMask, 1},
                                   {property->getId(), osg::FieldMask::all(), 1},
                                   {geometry->getId(), osg::Geometry::TexCoords3FieldMask, 1}}));

    EXPECT_TRUE(kyUVUtils::setTexSlot(geometry->getId(), kyUVTypes::UVSet3, osg::NullFC));
    EXPECT_EQ(geometry->getTexCoords3(), osg::NullFC);
    EXPECT_EQ(geometry->getIndexMapping(), std::vector<std::uint16_t>{osg::Geometry::MapPosition});
}

TEST(UVSlots, OnlyAGeometryCanBeGivenOne)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    EXPECT_FALSE(kyUVUtils::setTexSlot(osg::GeometryPtr(), kyUVTypes::UVSet0, osg::NullFC));
    const unsigned int gone = heldQuad()->getId();
    for (const unsigned int id : {0U, 0xFFFFFFFFU, node->getId(), gone})
        EXPECT_FALSE(kyUVUtils::setTexSlot(id, kyUVTypes::UVSet0, osg::NullFC));
}

TEST(UVSlots, TheMappingIsLeftAloneWithoutIndicesAndUnlessItHasOneEntry)
{
    const std::uint16_t position = osg::Geometry::MapPosition;
    for (const std::vector<std::uint16_t>& mapping :
         {std::vector<std::uint16_t>{}, {position, osg::Geometry::MapNormal}})
    {
        const auto geometry = heldQuad();
        geometry->setIndexMapping(mapping);
        kyUVUtils::addToIndexMapping(geometry, kyUVTypes::UVSet0);
        EXPECT_EQ(geometry->getIndexMapping(), mapping);
    }
    const auto noIndices = heldQuad();
    noIndices->setIndices(osg::NullFC);
    noIndices->setIndexMapping({position});
    kyUVUtils::addToIndexMapping(noIndices, kyUVTypes::UVSet0);
    EXPECT_EQ(noIndices->getIndexMapping(), std::vector<std::uint16_t>{position});
    kyUVUtils::removeFromIndexMapping(osg::NullFC, kyUVTypes::UVSet0);
}

TEST(UVSlots, AShellHasOneWhenAnySurfaceHasAndLosesThoseOfActiveSurfaces)
{
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad()}));
    EXPECT_FALSE(kyUVUtils::hasUVSet(shell, kyUVTypes::UVSet2));
    for (const unsigned int child : {0U, 1U})
        surfaceOf(shell, child)->setTexSlot(2, tiny::texCoords(UVs(4)));
    shell->getChild(1)->setTravMask(0);
    kyUVUtils::removeUVSet(shell, kyUVTypes::UVSet2);
    EXPECT_EQ(surfaceOf(shell, 0)->getTexCoords2(), osg::NullFC);
    EXPECT_NE(surfaceOf(shell, 1)->getTexCoords2(), osg::NullFC) << "hidden";
    EXPECT_TRUE(kyUVUtils::hasUVSet(shell, kyUVTypes::UVSet2));
    EXPECT_FALSE(kyUVUtils::hasUVSet(shell, noSlot));
    EXPECT_FALSE(kyUVUtils::hasUVSet(osg::NullFC, kyUVTypes::UVSet0));
}

TEST(UVSlots, AFaultyPlainGeometryKeepsItsSlotAndCountsAsWithoutOne)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const osg::GeometryPtr geometry = coreOf(node);
    geometry->setTexSlot(0, osg::GeoTexCoords3f::create()); // any kind counts
    EXPECT_TRUE(kyUVUtils::hasUVSet(node, kyUVTypes::UVSet0));
    geometry->getIndices()->setValue(4, 0);
    EXPECT_FALSE(kyUVUtils::hasUVSet(node, kyUVTypes::UVSet0));
    kyUVUtils::removeUVSet(node, kyUVTypes::UVSet0);
    EXPECT_NE(geometry->getTexCoords(), osg::NullFC);
    geometry->getIndices()->setValue(0, 0);
    kyUVUtils::removeUVSet(node, kyUVTypes::UVSet0);
    EXPECT_EQ(geometry->getTexCoords(), osg::NullFC);
}

TEST(UVSlots, NodesWithoutOneAreFoundWithoutLookingIntoShells)
{
    const osg::GeometryPtr with = quad();
    with->setTexSlot(1, tiny::texCoords(UVs(4)));
    const osg::RefPtr<osg::Node> root(nodeOf(osg::Group::create()));
    const osg::NodePtr noCore = osg::Node::create();
    const osg::NodePtr bare = nodeOf(quad());
    const osg::NodePtr halfShell = shellOf({with, quad()});
    const osg::NodePtr bareShell = shellOf({quad(), quad()});
    for (const osg::NodePtr& child : {noCore, halfShell, bareShell})
        root->addChild(child);
    noCore->addChild(bare);

    EXPECT_EQ(kyUVUtils::getNodesWithoutUVSet(root, kyUVTypes::UVSet1),
              (std::set<osg::NodePtr>{bare, bareShell}));
    std::set<osg::NodePtr> nodes{root};
    kyUVUtils::collectNodesWithoutUVSet(halfShell, kyUVTypes::UVSet1, nodes);
    EXPECT_EQ(nodes, std::set<osg::NodePtr>{root});
    EXPECT_EQ(kyUVUtils::getVisibleGeometryChildren(halfShell).size(), 2U);
}

UVs ramp(unsigned int count, float start = 0)
{
    UVs uvs;
    for (unsigned int i = 0; i < count; ++i)
        uvs.emplace_back(start + static_cast<float>(i), 0.5F);
    return uvs;
}

/// Both ways in which a plain geometry's values are reached.
class PlainUVs : public testing::TestWithParam<bool>
{
protected:
    PlainUVs() { kyUVUtils::setUseCompactMesh(GetParam()); }
    ~PlainUVs() override { kyUVUtils::setUseCompactMesh(true); }

    UVs read() const
    {
        UVs uvs;
        kyUVUtils::getUVValues(geometry, node, UVSet0, uvs);
        return uvs;
    }

    osg::RefPtr<osg::Node> node{nodeOf(quad())};
    osg::GeometryPtr geometry = coreOf(node);
};

INSTANTIATE_TEST_SUITE_P(WithAndWithoutMesh, PlainUVs, testing::Bool());

TEST_P(PlainUVs, ComeBackAsWritten)
{
    kyUVUtils::setUVValues(geometry, node, UVSet0, ramp(4));
    EXPECT_EQ(read(), ramp(4));
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(geometry, UVSet0), ramp(4));

    const Ids ids{3, 0, 3};
    kyUVUtils::setUVValues(geometry, node, UVSet0, ids.data(), 3, ramp(3, 10));
    EXPECT_EQ(read(), (UVs{Vec2f(11, .5F), Vec2f(1, .5F), Vec2f(2, .5F), Vec2f(12, .5F)}));
    UVs some(7);
    kyUVUtils::getUVValues(geometry, node, UVSet0, ids.data(), 3, some);
    EXPECT_EQ(some, (UVs{Vec2f(12, .5F), Vec2f(11, .5F), Vec2f(12, .5F)}));
}

TEST_P(PlainUVs, AreLeftAloneByWhatDoesNotFit)
{
    kyUVUtils::setUVValues(geometry, node, UVSet0, ramp(4));
    const Ids ids{0, 4};
    kyUVUtils::setUVValues(geometry, node, UVSet0, {});
    kyUVUtils::setUVValues(geometry, node, UVSet0, UVs(3));
    kyUVUtils::setUVValues(geometry, node, UVSet0, UVs(5));
    kyUVUtils::setUVValues(geometry, node, UVSet0, ids.data(), 1, UVs(2));
    kyUVUtils::setUVValues(geometry, node, UVSet0, ids.data(), 2, UVs(2));
    kyUVUtils::setUVValues(geometry, node, UVSet(8), UVs(4));
    kyUVUtils::setUVValues(osg::NullFC, node, UVSet0, UVs(4));
    EXPECT_EQ(read(), ramp(4));

    UVs out = ramp(2);
    kyUVUtils::getUVValues(geometry, node, UVSet0, ids.data(), 2, out);
    kyUVUtils::getUVValues(osg::NullFC, node, UVSet0, out);
    geometry->getIndices()->setValue(4, 0);
    kyUVUtils::getUVValues(geometry, node, UVSet0, out);
    EXPECT_EQ(out, ramp(2));
    kyUVUtils::setUVValues(geometry, node, UVSet0, UVs(4));
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(geometry, UVSet0), ramp(4));
}

TEST(LocalUVs, ReplaceASlotOfTheWrongSizeAndKeepOneOfAnotherKind)
{
    const osg::RefPtr<osg::Geometry> geometry(quad());
    EXPECT_EQ(kyUVUtils::getLocalVertexCount(geometry), 4U);
    EXPECT_EQ(kyUVUtils::getLocalUVCount(geometry, UVSet0), 0U);
    geometry->setTexSlot(0, tiny::texCoords(ramp(3)));
    EXPECT_EQ(kyUVUtils::getLocalUVCount(geometry, UVSet0), 3U);
    kyUVUtils::setLocalUVs(geometry, UVSet0, ramp(3));
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(geometry, UVSet0), ramp(3)) << "not the vertices' number";
    kyUVUtils::setLocalUVs(geometry, UVSet0, ramp(4, 7));
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(geometry, UVSet0), ramp(4, 7));

    const osg::GeoTexCoordsPtr wide = osg::GeoTexCoords3f::create();
    wide->setValues(ramp(4));
    geometry->setTexSlot(1, wide);
    kyUVUtils::setLocalUVs(geometry, kyUVTypes::UVSet1, ramp(4, 7));
    EXPECT_EQ(wide->getValues(), ramp(4));
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(geometry, kyUVTypes::UVSet1), UVs());
    EXPECT_EQ(kyUVUtils::getLocalUVCount(geometry, kyUVTypes::UVSet1), 4U) << "of any kind";
}

TEST(NoCompactUVs, StayAlignedWithAllSurfacesOfAShell)
{
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad(), quadsApart(2)}));
    shell->addChild(osg::Node::create());
    surfaceOf(shell, 0)->setTexSlot(0, tiny::texCoords(ramp(4)));
    shell->getChild(0)->setTravMask(0);
    surfaceOf(shell, 1)->getIndices()->setValue(4, 0); // faulty, and without the slot

    UVs uvs = ramp(1, 99);
    kyUVUtils::getNoCompactUVValues(shell, UVSet0, uvs);
    UVs expected = ramp(1, 99);
    expected.insert(expected.end(), {Vec2f(0, .5F), Vec2f(1, .5F), Vec2f(2, .5F), Vec2f(3, .5F)});
    expected.resize(1 + 16);
    EXPECT_EQ(uvs, expected) << "appended, zeros for what is missing";

    std::map<unsigned int, UVs> uvsOfNode;
    kyUVUtils::getNoCompactUVValues(shell, UVSet0, uvsOfNode);
    EXPECT_EQ(uvsOfNode, (std::map<unsigned int, UVs>{{shell->getChild(0)->getId(), ramp(4)},
                                                      {shell->getChild(1)->getId(), {}},
                                                      {shell->getChild(2)->getId(), {}}}));

    kyUVUtils::setNoCompactUVValues(shell, UVSet0, ramp(15)); // too short for the last surface
    for (const unsigned int child : {0U, 1U})
        EXPECT_EQ(kyUVUtils::getUVValuesLocal(surfaceOf(shell, child), UVSet0),
                  ramp(4, 4 * static_cast<float>(child)));
    EXPECT_EQ(surfaceOf(shell, 2)->getTexSlot(0), osg::NullFC);
    kyUVUtils::setNoCompactUVValues(shell, UVSet0, ramp(16));
    EXPECT_EQ(kyUVUtils::getUVValuesLocal(surfaceOf(shell, 2), UVSet0), ramp(8, 8));
}

TEST(NoCompactUVs, OfAPlainGeometryNeedTheRightNumber)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    kyUVUtils::setNoCompactUVValues(node, UVSet0, ramp(5));
    kyUVUtils::setNoCompactUVValues(node, UVSet0, {});
    EXPECT_EQ(coreOf(node)->getTexSlot(0), osg::NullFC);
    kyUVUtils::setNoCompactUVValues(node, UVSet0, ramp(4));
    UVs uvs;
    kyUVUtils::getNoCompactUVValues(node, UVSet0, uvs);
    kyUVUtils::getNoCompactUVValues(osg::NullFC, UVSet0, uvs);
    EXPECT_EQ(uvs, ramp(4));
}

TEST(ShellUVs, TellTheirOwnSlotAndNothingElse)
{
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    kyUVUtils::setUVValues(coreOf(shell), shell, UVSet0, ramp(8));
    tiny::NoticeJournal journal;
    std::vector<tiny::NoticeJournal::Notice> expected;
    for (const unsigned int child : {0U, 1U}) {
        const osg::GeometryPtr surface = surfaceOf(shell, child);
        journal.watch(surface);
        journal.watch(surface->getTexSlot(0));
        expected.push_back({surface->getTexSlot(0)->getId(), osg::FieldMask::all(), 1});
        expected.push_back({surface->getId(), osg::Geometry::TexCoordsFieldMask, 1});
    }
    journal.watch(coreOf(shell));
    expected.push_back({coreOf(shell)->getId(), osg::Geometry::TexCoordsFieldMask, 1});
    const Ids ids{5};
    kyUVUtils::setUVValues(coreOf(shell), shell, UVSet0, ids.data(), 1, ramp(1));
    EXPECT_EQ(journal.notices, expected);
}

} // namespace
