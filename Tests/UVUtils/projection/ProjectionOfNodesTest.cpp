// What the planar and the cylindrical projection do alike with the nodes that they are given.

#include "OpenSGUtils/kyNodePermission.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/projection/SupportGeometries.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

constexpr auto set = kyUVTypes::UVSet1;

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
    kyNodePermission::deny(locked, kyScenegraphTypes::EditTextureCoordinates);
    surfaceOf(shell, 1)->setTexSlot(set, osg::GeoTexCoords3f::create());
    int notices = 0;
    surfaceOf(shell, 0)->registerChangedCallback(
        std::make_shared<osg::FieldContainer::ChangedCallback>([&](auto&&...) {
            ++notices;
            EXPECT_TRUE(TypeParam::hasSettings(shell, set));
        }));

    auto settings = TypeParam::getDefaultSettings({shell}, 2, 1);
    settings.setProjectionCenter(osg::Vec3f(3, 2, 1));
    TypeParam::apply({locked, shell, group}, set, settings);

    EXPECT_GT(notices, 0);
    EXPECT_EQ(TypeParam::readSettings(shell, set).getProjectionCenter(), osg::Vec3f(3, 2, 1));
    EXPECT_TRUE(TypeParam::hasSettings(group, set));
    EXPECT_FALSE(TypeParam::hasSettings(locked, set) || coreOf(locked)->getTexSlot(set));
    for (unsigned i = 0; i < 2; ++i) {
        EXPECT_FALSE(TypeParam::hasSettings(shell->getChild(i), set));
        const osg::GeometryPtr surface = surfaceOf(shell, i);
        const auto uvs = osg::dcast<osg::GeoTexCoords2f>(surface->getTexSlot(set));
        ASSERT_TRUE(uvs);
        EXPECT_EQ(uvs->getSize(), surface->getPositions()->getSize());
    }
    EXPECT_TRUE(log.lines.empty());
}

TYPED_TEST(ProjectionOfNodes, LeavesThemAloneWithoutSupportGeometry)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quad()));
    const LogCapture log;
    TypeParam::apply({node}, set, {});
    EXPECT_THAT(log.lines, testing::ElementsAre("warning: WARNING: projectionTransformNode or "
                                                "textureTransformNode not found!"));
    EXPECT_FALSE(TypeParam::hasSettings(node, set) || coreOf(node)->getTexSlot(set));
}

} // namespace
