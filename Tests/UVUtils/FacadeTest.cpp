#include "UVUtils/model/kyUVUtils.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/model/TempIndexList.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
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

std::string reportOn(const osg::NodePtr& node, const Ids& selected)
{
    const osg::GeometryPtr core = coreOf(node);
    osg::GeoTmpIndexEditInterface(core, kyUVTypes::FreeVertices).assign(selected);
    std::ostringstream stream;
    kyUVUtils::debugOutPntsInfo(core, node, stream);
    return stream.str();
}

TEST(PointsReport, ListsSelectedVerticesOfEachSurfaceOnceWithAllTheirProperties)
{
    LogCapture log;
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad()}));
    const osg::GeometryPtr geometry = surfaceOf(shell, 1);
    geometry->setNormals(osg::GeoNormals3f::create());
    geometry->getNormals()->setValues(std::vector<osg::Vec3f>(4, osg::Vec3f(0, 0, 1)));
    geometry->setColors(osg::GeoColors4f::create());
    geometry->getColors()->setValues(std::vector<osg::Color4f>(4, osg::Color4f(.5F, .25F, 0, 1)));
    geometry->setTexSlot(0, tiny::texCoords(UVs(4, osg::Vec2f(.125F, 2))));
    geometry->setTexSlot(7, osg::GeoTexCoords3f::create());
    geometry->getTexSlot(7)->setValues(UVs(4, osg::Vec2f(3, 4)));
    const std::string emptySlots =
        "  TexCoords1: NULL\n  TexCoords2: NULL\n  TexCoords3: NULL\n  TexCoords4: NULL\n"
        "  TexCoords5: NULL\n  TexCoords6: NULL\n";
    EXPECT_EQ(reportOn(shell, {6, 1, 6}),
              "Epsilon value is 1.19209e-07\nThere are 2vertices\n info for vert 0\n"
              "  Positions: 1, 0, 0\n  Normals: NULL\n  Colors: NULL\n  SecondaryColors: NULL\n"
              "  TexCoords: NULL\n" +
                  emptySlots +
                  "  TexCoords7: NULL\n info for vert 1\n  Positions: 1, 1, 0\n"
                  "  Normals: 0, 0, 1\n  Colors: 0.5 0.25 0\n  SecondaryColors: NULL\n"
                  "  TexCoords: 0.125, 2\n" +
                  emptySlots + "  TexCoords7: 3, 4, 0\n");
    EXPECT_EQ(reportOn(shell, {}), "");
    const osg::RefPtr<osg::Node> plain(nodeOf(quad()));
    EXPECT_NE(reportOn(plain, {2}).find(" vert 0\n  Positions: 1, 1, 0\n"), std::string::npos);
    EXPECT_EQ(log.lines.size(), 0U);
    EXPECT_EQ(reportOn(osg::RefPtr<osg::Node>(nodeOf(brokenQuad())), {0}), "");
    EXPECT_EQ(log.lines.size(), 1U);
}

} // namespace
