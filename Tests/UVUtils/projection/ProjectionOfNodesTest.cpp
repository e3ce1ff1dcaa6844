// What the planar and the cylindrical projection do alike with the nodes that they are given.

#include "OpenSGUtils/kyNodePermission.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/projection/SupportGeometries.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"

#include <gtest/gtest.h>

namespace
{

constexpr auto set = kyUVTypes::UVSet1;
const auto projecting = static_cast<unsigned>(kyScenegraphTypes::Action{27});

template <class Projection>
class ProjectionOfNodes : public testing::Test
{};

using Projections = testing::Types<kyUVPlanarProjection, kyUVCylindricalProjection>;
TYPED_TEST_SUITE(ProjectionOfNodes, Projections);

TYPED_TEST(ProjectionOfNodes, StoresOnWhatWasNamedThenWritesTheGeometriesOfIt)
{
    const SupportGeometries support;
    const LogCapture log;
    const osg::RefPtr<osg::Node> shell(twoSurfaceShell());
    const osg::RefPtr<osg::Node> locked(nodeOf(quad()));
    const osg::RefPtr<osg::Node> group(osg::Node::create());
    const osg::RefPtr<osg::Node> below(nodeOf(quad()));
    group->addChild(below);
    kyNodePermission::deny(locked, projecting);
    surfaceOf(shell, 1)->setTexSlot(set, osg::GeoTexCoords3f::create());
    int writes = 0;
    surfaceOf(shell, 0)->registerChangedCallback(
        std::make_shared<osg::FieldContainer::ChangedCallback>(
            [&](unsigned, osg::FieldMask mask, unsigned) {
                writes += (mask & osg::Geometry::TexCoords1FieldMask).any();
                EXPECT_TRUE(TypeParam::hasSettings(shell, set));
            }));

    auto settings = TypeParam::getDefaultSettings({shell}, 2, 1);
    settings.setProjectionCenter(osg::Vec3f(3, 2, 1));
    TypeParam::apply({locked, shell, group}, set, settings);

    EXPECT_GT(writes, 0);
    EXPECT_EQ(TypeParam::readSettings(shell, set).getProjectionCenter(), osg::Vec3f(3, 2, 1));
    EXPECT_TRUE(TypeParam::hasSettings(group, set));
    EXPECT_FALSE(TypeParam::hasSettings(shell, kyUVTypes::UVSet0));
    for (const osg::NodePtr& node : {shell->getChild(0), shell->getChild(1), locked.get()})
        EXPECT_FALSE(TypeParam::hasSettings(node, set));
    for (unsigned i = 0; i < 2; ++i) {
        const osg::GeometryPtr surface = surfaceOf(shell, i);
        const auto uvs = osg::dcast<osg::GeoTexCoords2f>(surface->getTexSlot(set));
        ASSERT_TRUE(uvs);
        EXPECT_EQ(uvs->getSize(), surface->getPositions()->getSize());
        EXPECT_FALSE(surface->getTexSlot(0));
    }
    for (const osg::NodePtr& node : {locked.get(), below.get()})
        EXPECT_FALSE(coreOf(node)->getTexSlot(set));
    EXPECT_TRUE(log.lines.empty());
}

TYPED_TEST(ProjectionOfNodes, SaysWhatHindersAllOfIt)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const osg::RefPtr<osg::Node> locked(nodeOf(quad()));
    kyNodePermission::deny(locked, projecting);
    LogCapture log;
    TypeParam::apply({}, set, {});
    TypeParam::apply({locked, osg::NullFC}, set, {});
    TypeParam::apply({locked, node}, set, {}); // there is no support geometry
    EXPECT_EQ(log.lines, (std::vector<std::string>{
                             "info: Map Texture: Nothing selected.",
                             "info: Map Texture: Locked nodes selected.",
                             "warning: WARNING: projectionTransformNode or textureTransformNode "
                             "not found!"}));
    EXPECT_FALSE(TypeParam::hasSettings(node, set));
    EXPECT_FALSE(coreOf(node)->getTexSlot(set));
}

} // namespace
