#include "UVUtils/model/kyUVUtils.h"

#include "OpenSG/SurfaceBase.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/RandomShells.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/Edge.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

using Texts = std::vector<std::string>;

namespace
{

osg::GeometryPtr broken()
{
    const osg::GeometryPtr geometry = quad();
    geometry->getIndices()->setValue(4, 0);
    return geometry;
}

TEST(Facade, ItsSettersPostTwoMessagesAndFillShadingNone)
{
    Texts messages;
    kyOpenSGUtils::setCallHandler([&](const char* name, int value) {
        messages.push_back(name + std::to_string(value));
        return 1;
    });
    const Texts posted{"VESelectionChanged0", "UVSelectionModeChanged0"};
    kyUVUtils::setSelectMode(kyUVUtils::ESelectMode(77));
    EXPECT_EQ(std::exchange(messages, {}), posted);
    EXPECT_EQ(kyUVUtils::getSelectMode(), 77);
    kyUVUtils::setSelectMode(kyUVUtils::SelectAll);
    kyUVUtils::setSelectMode(kyUVUtils::SelectAll);
    EXPECT_EQ(std::exchange(messages, {}).size(), 4U) << "also without a change";
    kyUVUtils::setSelectUVSet(kyUVTypes::UVSet1);
    EXPECT_EQ(std::exchange(messages, {}), posted);
    kyUVUtils::setUseCompactMesh(false);
    EXPECT_EQ(std::exchange(messages, {}), posted);
    kyUVUtils::setFillShading(true);
    EXPECT_EQ(messages, Texts());

    EXPECT_EQ(kyUVUtils::getSelectUVSet(), kyUVTypes::UVSet1);
    EXPECT_FALSE(kyUVUtils::getUseCompactMesh());
    EXPECT_TRUE(kyUVUtils::getFillShading());

    kyOpenSGUtils::setCallHandler(nullptr);
    kyUVUtils::setSelectUVSet(kyUVTypes::UVSet0);
    kyUVUtils::setUseCompactMesh(true);
    kyUVUtils::setFillShading(false);
}

TEST(Facade, OnlyShellsGoThroughACompactMeshWhenTheFlagIsOff)
{
    const osg::RefPtr<osg::Geometry> plain(quad());
    const osg::RefPtr<osg::Node> shell(shellOf({quad()}));
    for (const bool use : {true, false}) {
        kyUVUtils::setUseCompactMesh(use);
        EXPECT_EQ(kyUVUtils::useCMesh(plain), use);
        EXPECT_TRUE(kyUVUtils::useCMesh(coreOf(shell)));
        EXPECT_FALSE(kyUVUtils::useCMesh(osg::NullFC));
    }
    kyUVUtils::setUseCompactMesh(true);
}

TEST(Facade, SaysWhatIsWrongWithAGeometryOnlyWhenAsked)
{
    LogCapture log;
    const osg::RefPtr<osg::Node> good(nodeOf(quad()));
    const osg::RefPtr<osg::Node> bad(nodeOf(broken()));
    NodeUtils::setName(bad, "50%d off");

    EXPECT_TRUE(kyUVUtils::isValidGeometry(coreOf(good), good, true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(osg::NullFC, bad, true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(bad), bad, false));
    EXPECT_EQ(log.lines, Texts());

    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(bad), bad, true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(bad), osg::NullFC, true));
    EXPECT_EQ(log.lines,
              (Texts{"error: UV Editor: Error on geometry '50%d off': index out of range",
                     "error: UV Editor: Error on geometry '<noname>': index out of range"}));
}

TEST(Facade, AShellIsAsGoodAsItsBestSurface)
{
    LogCapture log;
    const osg::GeometryPtr noIndices = quad();
    noIndices->setIndices(osg::NullFC);
    const osg::RefPtr<osg::Node> mixed(shellOf({broken(), quad(), noIndices}));
    mixed->addChild(osg::Node::create()); // no geometry: counts for neither
    NodeUtils::setName(mixed, "mixed");
    const osg::RefPtr<osg::Node> hidden(shellOf({quad()}));
    hidden->getChild(0)->setTravMask(0);
    const osg::RefPtr<osg::Node> empty(shellOf({}));
    const osg::RefPtr<osg::Node> allBad(shellOf({broken()}));
    const auto isValid = [](const osg::NodePtr& node, bool verbose) {
        return kyUVUtils::isValidGeometry(coreOf(node), node, verbose);
    };

    EXPECT_TRUE(isValid(hidden, true));
    EXPECT_TRUE(activeSurfaces(hidden).empty());
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(mixed), osg::NullFC, true));
    EXPECT_TRUE(isValid(mixed, false));
    EXPECT_FALSE(isValid(empty, false));
    EXPECT_EQ(log.lines, Texts());

    EXPECT_TRUE(isValid(mixed, true));
    EXPECT_FALSE(isValid(empty, true));
    EXPECT_FALSE(isValid(allBad, true));
    EXPECT_EQ(log.lines,
              (Texts{"warning: UV Editor: Skipping 2 surface(s) of shell 'mixed': no indices, "
                     "index out of range",
                     "error: UV Editor: Shell '<noname>' has no valid surfaces.",
                     "error: UV Editor: Shell '<noname>' has no valid surfaces."}));
}

TEST(ActiveSurfaces, AreTheUsableVisibleChildrenOfAShellInTheirOrder)
{
    const auto sideB = osg::SurfaceBase::create();
    const osg::RefPtr<osg::Geometry> model(quad());
    sideB->setPositions(model->getPositions());
    sideB->setIndices(model->getIndices());
    sideB->setSide(osg::SurfaceBase::SideB);

    const osg::RefPtr<osg::Node> shell(shellOf({quad(), broken(), quad(), sideB, quad()}));
    shell->addChild(osg::Node::create());
    shell->getChild(2)->setTravMask(0);
    const auto children = [&] {
        Ids numbers;
        for (const ActiveSurface& surface : activeSurfaces(shell)) {
            EXPECT_EQ(surface.node, shell->getChild(surface.childIndex));
            EXPECT_EQ(surface.firstId, 4 * numbers.size());
            numbers.push_back(surface.childIndex);
        }
        return numbers;
    };
    EXPECT_EQ(children(), (Ids{0, 3, 4}));
    kyRenderOptions::getInstance()->setShowABSideMask(osg::SurfaceBase::SideA);
    EXPECT_EQ(children(), (Ids{0, 4}));
    kyRenderOptions::getInstance()->setShowABSideMask(3);
}

TEST(ActiveSurfaces, APlainGeometryIsItsOwnEvenWhenHiddenOrBroken)
{
    const osg::RefPtr<osg::Node> node(nodeOf(broken()));
    node->setTravMask(0);
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    ASSERT_EQ(surfaces.size(), 1U);
    EXPECT_EQ(surfaces[0].node, node.get());
    EXPECT_EQ(surfaces[0].vertexCount, 4U);

    const osg::RefPtr<osg::Node> noCore(osg::Node::create());
    EXPECT_TRUE(activeSurfaces(noCore).empty());
    EXPECT_TRUE(activeSurfaces(osg::NullFC).empty());
}

/// Ids dealt to a shell of two quads.
class Dealing : public testing::Test
{
protected:
    using Hands = std::array<Ids, 2>;

    /// The ids of each surface, empty for one that was not called.
    Hands deal(const Ids& ids, bool keepOrder) const
    {
        Hands hands;
        int last = -1;
        kyUVUtils::callFuncOnActiveBaseGeometry(
            shell, ids.data(), static_cast<unsigned int>(ids.size()), keepOrder,
            [&](const osg::NodePtr& node, const osg::GeometryPtr& geometry, const Ids& localIds,
                const unsigned int& firstId) {
                const int child = shell->findChild(node);
                EXPECT_GT(child, last) << "once each, in their order";
                last = child;
                EXPECT_EQ(geometry, coreOf(node));
                EXPECT_EQ(firstId, child == 0 ? 0U : 4U);
                EXPECT_FALSE(localIds.empty());
                hands.at(static_cast<std::size_t>(child)) = localIds;
            });
        return hands;
    }

    osg::RefPtr<osg::Node> shell{shellOf({quad(), quad()})};
};

TEST_F(Dealing, KeepsTheOrderOfTheIdsOfASurfaceWhenAsked)
{
    EXPECT_EQ(deal({1, 6, 3, 5}, true), (Hands{Ids{1, 3}, Ids{2, 1}}));
    EXPECT_EQ(deal({1, 6, 3, 5}, false), (Hands{Ids{1, 3}, Ids{1, 2}}));
}

RC_GTEST_FIXTURE_PROP(Dealing, GivesEveryIdToItsSurfaceAndDropsTheRest, ())
{
    const Ids ids = *rc::gen::container<Ids>(rc::gen::weightedOneOf<unsigned int>(
        {{9, rc::gen::inRange(0U, 10U)}, {1, rc::gen::just(0xFFFFFFFFU)}}));
    const bool keepOrder = *rc::gen::arbitrary<bool>();
    Hands expected;
    for (const unsigned int id : ids)
        if (id < 8)
            expected.at(id / 4).push_back(id % 4);
    if (!keepOrder)
        for (Ids& hand : expected)
            std::sort(hand.begin(), hand.end());
    RC_ASSERT(deal(ids, keepOrder) == expected);
}

TEST(EdgeOfVertices, IsTheSameFromBothEnds)
{
    EXPECT_EQ(Edge(7, 3), Edge(3, 7));
    EXPECT_EQ(EdgeHash()(Edge(7, 3)), (std::uint64_t{3} << 32U) + 7);
}

} // namespace
