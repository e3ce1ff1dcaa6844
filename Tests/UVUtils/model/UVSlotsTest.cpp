#include "OpenSG/Group.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>

using kyUVTypes::UVSet;

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

} // namespace
