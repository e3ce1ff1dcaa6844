#include "UVUtils/model/kyUVUtils.h"

#include "OpenSG/SurfaceBase.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/Edge.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <utility>

using Texts = std::vector<std::string>;

namespace
{

osg::GeometryPtr coreOf(const osg::RefPtr<osg::Node>& node)
{
    return osg::dcast<osg::Geometry>(node->getCore());
}

osg::GeometryPtr broken()
{
    const osg::GeometryPtr geometry = quad();
    geometry->getIndices()->setValue(4, 0);
    return geometry;
}

/// What callFuncOnActiveBaseGeometry gave to one surface.
struct Dealt
{
    osg::GeometryPtr geometry;
    Ids ids;
    unsigned int firstId;

    friend bool operator==(const Dealt&, const Dealt&) = default;
};

std::vector<Dealt> deal(const osg::NodePtr& node, const Ids& ids, bool keepOrder)
{
    std::vector<Dealt> dealt;
    kyUVUtils::callFuncOnActiveBaseGeometry(
        node, ids.data(), static_cast<unsigned int>(ids.size()), keepOrder,
        [&](const osg::NodePtr&, const osg::GeometryPtr& geometry, const Ids& localIds,
            const unsigned int& firstId) {
            dealt.push_back({geometry, localIds, firstId});
        });
    return dealt;
}

TEST(Facade, ItsSettersPostTwoMessagesAndFillShadingNone)
{
    Texts messages;
    kyOpenSGUtils::setCallHandler([&](const char* name, int value) {
        messages.push_back(name + std::to_string(value));
        return 1;
    });
    const Texts posted{"VESelectionChanged0", "UVSelectionModeChanged0"};
    kyUVUtils::setSelectMode(kyUVUtils::getSelectMode());
    EXPECT_EQ(std::exchange(messages, {}), posted) << "also without a change";
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
        EXPECT_EQ(kyUVUtils::useCMesh(plain.get()), use);
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
    NodeUtils::setName(bad.get(), "50%d off");

    EXPECT_TRUE(kyUVUtils::isValidGeometry(coreOf(good), good.get(), true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(osg::NullFC, bad.get(), true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(bad), bad.get(), false));
    EXPECT_EQ(log.lines, Texts());

    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(bad), bad.get(), true));
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
    NodeUtils::setName(mixed.get(), "mixed");
    const osg::RefPtr<osg::Node> hidden(shellOf({quad()}));
    hidden->getChild(0)->setTravMask(0);
    const osg::RefPtr<osg::Node> empty(shellOf({}));
    const osg::RefPtr<osg::Node> allBad(shellOf({broken()}));

    EXPECT_TRUE(kyUVUtils::isValidGeometry(coreOf(hidden), hidden.get(), true));
    EXPECT_TRUE(activeSurfaces(hidden.get()).empty());
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(mixed), osg::NullFC, true));
    EXPECT_TRUE(kyUVUtils::isValidGeometry(coreOf(mixed), mixed.get(), false));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(empty), empty.get(), false));
    EXPECT_EQ(log.lines, Texts());

    EXPECT_TRUE(kyUVUtils::isValidGeometry(coreOf(mixed), mixed.get(), true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(empty), empty.get(), true));
    EXPECT_FALSE(kyUVUtils::isValidGeometry(coreOf(allBad), allBad.get(), true));
    EXPECT_EQ(log.lines,
              (Texts{"warning: UV Editor: Skipping 2 surface(s) of shell 'mixed': no indices, "
                     "index out of range",
                     "error: UV Editor: Shell '<noname>' has no valid surfaces.",
                     "error: UV Editor: Shell '<noname>' has no valid surfaces."}));
}

TEST(ActiveSurfaces, AreTheUsableVisibleChildrenOfAShellInTheirOrder)
{
    const auto sideB = osg::SurfaceBase::create();
    const osg::GeometryPtr model = quad();
    sideB->setPositions(model->getPositions());
    sideB->setIndices(model->getIndices());
    sideB->setSide(osg::SurfaceBase::SideB);
    model->subRef();

    const osg::RefPtr<osg::Node> shell(shellOf({quad(), broken(), quad(), sideB, quad()}));
    shell->getChild(2)->setTravMask(0);
    const auto children = [&] {
        Ids numbers;
        for (const ActiveSurface& surface : activeSurfaces(shell.get())) {
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
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node.get());
    ASSERT_EQ(surfaces.size(), 1U);
    EXPECT_EQ(surfaces[0].node, node.get());
    EXPECT_EQ(surfaces[0].vertexCount, 4U);

    const osg::RefPtr<osg::Node> noCore(osg::Node::create());
    EXPECT_TRUE(activeSurfaces(noCore.get()).empty());
    EXPECT_TRUE(activeSurfaces(osg::NullFC).empty());
}

class Dealing : public testing::Test
{
protected:
    Dealing() : shell(shellOf({quad(), quad()})) {}

    osg::GeometryPtr surface(unsigned int i) const
    {
        return osg::dcast<osg::Geometry>(shell->getChild(i)->getCore());
    }

    osg::RefPtr<osg::Node> shell;
};

TEST_F(Dealing, KeepsTheOrderOfTheIdsOfASurfaceWhenAsked)
{
    EXPECT_EQ(deal(shell.get(), {1, 6, 3, 5}, true),
              (std::vector<Dealt>{{surface(0), {1, 3}, 0}, {surface(1), {2, 1}, 4}}));
    EXPECT_EQ(deal(shell.get(), {1, 6, 3, 5}, false),
              (std::vector<Dealt>{{surface(0), {1, 3}, 0}, {surface(1), {1, 2}, 4}}));
}

TEST_F(Dealing, CallsOnlySurfacesThatReceiveIds)
{
    EXPECT_EQ(deal(shell.get(), {7, 4, 4}, true), (std::vector<Dealt>{{surface(1), {3, 0, 0}, 4}}));
    EXPECT_EQ(deal(shell.get(), {8, 0xFFFFFFFF}, false), (std::vector<Dealt>{}));
    EXPECT_EQ(deal(shell.get(), {}, false), (std::vector<Dealt>{}));
    EXPECT_EQ(deal(osg::NullFC, {0}, false), (std::vector<Dealt>{}));
}

RC_GTEST_FIXTURE_PROP(Dealing, LosesNoIdThatASurfaceHas, ())
{
    const Ids ids = *rc::gen::container<Ids>(rc::gen::inRange(0U, 10U));
    const bool keepOrder = *rc::gen::arbitrary<bool>();
    Ids expected[2];
    for (const unsigned int id : ids)
        if (id < 8)
            expected[id / 4].push_back(id % 4);
    const std::vector<Dealt> dealt = deal(shell.get(), ids, keepOrder);
    std::size_t next = 0;
    for (unsigned int i = 0; i < 2; ++i) {
        if (expected[i].empty())
            continue;
        if (!keepOrder)
            std::sort(expected[i].begin(), expected[i].end());
        RC_ASSERT(next < dealt.size());
        RC_ASSERT(dealt[next] == (Dealt{surface(i), expected[i], 4 * i}));
        ++next;
    }
    RC_ASSERT(next == dealt.size());
}

TEST(EdgeOfVertices, IsTheSameFromBothEnds)
{
    EXPECT_EQ(Edge(7, 3), Edge(3, 7));
    EXPECT_EQ(EdgeHash()(Edge(7, 3)), (std::uint64_t{3} << 32U) + 7);
}

} // namespace
