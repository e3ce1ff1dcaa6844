#include "UVUtils/model/kyUVUtils.h"

#include "OpenSG/SurfaceBase.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

using Texts = std::vector<std::string>;

namespace
{

TEST(Facade, ItsSettersPostTwoMessagesAndFillShadingNone)
{
    Texts messages;
    kyOpenSGUtils::setCallHandler([&](const char* name, int value) {
        messages.push_back(name + std::to_string(value));
        return 1;
    });
    const Texts posted{"VESelectionChanged0", "UVSelectionModeChanged0"};
    kyUVUtils::setSelectMode(kyUVUtils::ESelectMode(77));
    EXPECT_EQ(kyUVUtils::getSelectMode(), 77);
    EXPECT_EQ(std::exchange(messages, {}), posted);
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

TEST(Facade, SaysWhatIsWrongWithAGeometryOnlyWhenAsked)
{
    LogCapture log;
    const osg::RefPtr<osg::Node> good(nodeOf(quad()));
    const osg::RefPtr<osg::Node> bad(nodeOf(brokenQuad()));
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
    const osg::RefPtr<osg::Node> mixed(shellOf({brokenQuad(), quad(), noIndices}));
    mixed->addChild(osg::Node::create()); // no geometry: counts for neither
    NodeUtils::setName(mixed, "mixed");
    const osg::RefPtr<osg::Node> hidden(shellOf({quad()}));
    hidden->getChild(0)->setTravMask(0);
    const osg::RefPtr<osg::Node> empty(shellOf({}));
    const osg::RefPtr<osg::Node> allBad(shellOf({brokenQuad()}));
    const auto isValid = [](const osg::NodePtr& node, bool verbose) {
        return kyUVUtils::isValidGeometry(coreOf(node), node, verbose);
    };

    EXPECT_TRUE(isValid(hidden, true));
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

    const osg::RefPtr<osg::Node> shell(shellOf({quad(), brokenQuad(), quad(), sideB, quad()}));
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
    const osg::RefPtr<osg::Node> node(nodeOf(brokenQuad()));
    node->setTravMask(0);
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    ASSERT_EQ(surfaces.size(), 1U);
    EXPECT_EQ(surfaces[0].node, node.get());
    EXPECT_EQ(surfaces[0].vertexCount, 4U);

    const osg::RefPtr<osg::Node> noCore(osg::Node::create());
    EXPECT_TRUE(activeSurfaces(noCore).empty());
    EXPECT_TRUE(activeSurfaces(osg::NullFC).empty());
}

RC_GTEST_PROP(Dealing, GivesEveryIdToItsSurfaceOnceAndDropsTheRest, ())
{
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad()}));
    const Ids ids = *rc::gen::container<Ids>(rc::gen::weightedOneOf<unsigned int>(
        {{9, rc::gen::inRange(0U, 10U)}, {1, rc::gen::just(0xFFFFFFFFU)}}));
    const bool keepOrder = *rc::gen::arbitrary<bool>();
    std::map<unsigned int, Ids> expected; // by child; one without ids is not called
    for (const unsigned int id : ids)
        if (id < 8)
            expected[id / 4].push_back(id % 4);
    if (!keepOrder)
        for (auto& [child, hand] : expected)
            std::sort(hand.begin(), hand.end());

    std::vector<std::pair<unsigned int, Ids>> dealt;
    kyUVUtils::callFuncOnActiveBaseGeometry(
        shell, ids.data(), static_cast<unsigned int>(ids.size()), keepOrder,
        [&](const osg::NodePtr& node, const osg::GeometryPtr& geometry, const Ids& localIds,
            const unsigned int& firstId) {
            const unsigned int child = firstId / 4;
            RC_ASSERT(node == shell->getChild(child));
            RC_ASSERT(geometry == coreOf(node));
            dealt.emplace_back(child, localIds);
        });
    RC_ASSERT(dealt == decltype(dealt)(expected.begin(), expected.end()));
}

} // namespace
