#include "UVUtils/projection/kyUVPlanarProjection.h"

#include "UVUtils/projection/PlacedNode.h"
#include "UVUtils/projection/SupportGeometries.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>

namespace
{

using mathtest::isNear;
using osg::Pnt3f;
using osg::Vec3f;
using Settings = kyUVPlanarProjectionSettings;
constexpr auto set = kyUVTypes::UVSet3;
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();

/// With what only derived classes may call.
struct Planar : kyUVPlanarProjection
{
    using kyUVPlanarProjection::initializeOrientation;
    using kyUVPlanarProjection::rotateInPlanarProjectionSpace;
    using kyUVPlanarProjection::rotatePlanarProjectionPlaneNormal;
};

Settings settingsOf(Vec2f size, Vec3f center)
{
    Settings settings;
    settings.setTextureWidth(size.x());
    settings.setTextureHeight(size.y());
    settings.setProjectionCenter(center);
    return settings;
}

TEST(PlanarProjection, PutsTheRectangleOnZeroToOne)
{
    using P = Pnt3f;
    using V = Vec3f;
    using UV = Vec2f;
    const struct Case
    {
        const char* name;
        UV size{4, 2};
        UV offset{};
        UV scale{1, 1};
        V degrees{};
        bool isZUp = false;
        P at{1, 2, 3}; ///< the centre of the plane
        UV uv;
    } cases[] = {
        {.name = "centre", .uv = UV(.5, .5)},
        {.name = "corner", .at = P(3, 3, 3), .uv = UV(1, 1)},
        {.name = "behind", .at = P(-1, 1, -50), .uv = UV(0, 0)},
        {.name = "offset", .offset = UV(2, -1), .uv = UV(1, 0)},
        {.name = "scale", .scale = UV(2, -4), .at = P(3, 3, 3), .uv = UV(.75, .375)},
        {.name = "no width", .size = UV(NaN, 2), .at = P(501, 502, 3), .uv = UV(1, 1)},
        {.name = "flat", .size = UV(4, 0), .scale = UV(.1, 1), .at = P(51, 2, 3), .uv = UV(1, .5)},
        {.name = "rho", .offset = UV(1, 0), .degrees = V(0, 0, 90), .uv = UV(.5, 1)},
        {.name = "phi", .degrees = V(90, 0, 0), .at = P(7, 3, 1), .uv = UV(1, 1)},
        {.name = "theta", .degrees = V(0, 90, 0), .at = P(3, 7, 4), .uv = UV(1, 1)},
        {.name = "Z", .isZUp = true, .at = P(3, 7, 2), .uv = UV(1, 1)},
        {.name = "Z phi", .degrees = V(90, 0, 0), .isZUp = true, .at = P(7, 4, 2), .uv = UV(1, 1)},
        {.name = "Z th", .degrees = V(0, 90, 0), .isZUp = true, .at = P(3, 3, 7), .uv = UV(1, 1)},
        {.name = "singular", .scale = UV(0, 1), .at = P(3, 5, 7), .uv = UV(2, 3)},
    };
    SupportGeometries support;
    support.planar.setPlaneDistance(25);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const CameraUp up(c.isZUp);
        Settings settings = settingsOf(c.size, V(1, 2, 3));
        settings.setTextureOffset(c.offset);
        settings.setTextureScale(c.scale);
        settings.setProjectionRotation(c.degrees);
        const PlacedNode placed(geometryOf({c.at}, {}), {});
        coreOf(placed.node)->setTexSlot(set, tiny::texCoords(UVs(3)));
        Planar::apply({placed.node}, set, settings);
        ASSERT_EQ(placed.uvs(set).size(), 1);
        EXPECT_TRUE(isNear(placed.uvs(set)[0], c.uv, 1e-5F));
    }
}

RC_GTEST_PROP(PlanarProjection, FollowsTheTurnOfThePlane, (bool isZUp))
{
    const SupportGeometries support;
    const CameraUp up(isZUp);
    const osg::Quaternion before = mathtest::rotation();
    const Vec3f axis(mathtest::number(1), mathtest::number(1), 0.F);
    RC_PRE(axis.length() > 1e-3F);
    const float angle = mathtest::number(7);
    const auto after = before * osg::Quaternion::fromAxisAngle(axis, static_cast<double>(angle));
    Settings settings = settingsOf(Vec2f(4, 2), mathtest::vector(5));
    Planar::calculateProjectionRotation(settings, axis, angle, before);
    const Vec3f z(0, 0, 1);
    RC_ASSERT(isNear(Planar::get3DRotation(settings).rotate(z), after.rotate(z), 5e-6F));

    const UVs corners{Vec2f(0, 0), Vec2f(1, 0), Vec2f(1, 1), Vec2f(0, 1)};
    std::vector<Pnt3f> points;
    for (const Vec2f& uv : corners)
        points.emplace_back(settings.getProjectionCenter() +
                            after.rotate(Vec3f(4 * uv.x() - 2, 2 * uv.y() - 1, angle)));
    const osg::Matrix place = randomPlace();
    const PlacedNode placed(geometryOf(below(place, points), {}), place);
    Planar::apply({placed.node}, set, settings);
    // An image that stands nearly as it did, or nearly opposite, is put there exactly.
    const float rho = std::abs(settings.getProjectionRotation().z());
    const float tolerance = rho == 0 || rho > 179 ? 0.02F : 1e-3F;
    for (unsigned i = 0; i < 4; ++i)
        RC_ASSERT(isNear(placed.uvs(set)[i], corners[i], tolerance));
}

TEST(PlanarProjection, MeasuresTurnsWithinThePlane)
{
    const Vec3f x(1, 0, 0);
    const Vec3f y(0, 3, 0);
    const Vec3f z(0, 0, 1);
    const auto turn = Planar::rotateInPlanarProjectionSpace;
    EXPECT_NEAR(turn(x, y, z), 1.5707963, 1e-6);
    EXPECT_NEAR(turn(x, y, -z), -1.5707963, 1e-6);
    EXPECT_EQ(turn(x, x + Vec3f(.005F, .005F, .005F), z), 0.0);
    EXPECT_NEAR(turn(x, Vec3f(1, -.02F, 0), z), -.02, 1e-5);
    EXPECT_EQ(turn(x, -x, z), -3.1415927410125732);
    EXPECT_EQ(turn(x, -x, -z), -3.1415927410125732);
    EXPECT_EQ(turn(x, Vec3f(NaN, 0, 0), z), 0.0);
    EXPECT_EQ(Planar::rotatePlanarProjectionPlaneNormal(Vec3f(1e-6F, 0, 0), 1, {}), z);
    EXPECT_NE(Planar::rotatePlanarProjectionPlaneNormal(Vec3f(2e-6F, 0, 0), 1, {}), z);
}

TEST(PlanarProjection, FacesTheLargestSideOfABox)
{
    const std::pair<Pnt3f, Vec3f> degreesOfSize[] = {
        {Pnt3f(1, 1, 1), Vec3f(90, 180, 0)}, {Pnt3f(1, 1, 2), Vec3f(90, 180, 0)},
        {Pnt3f(2, 1, 1), Vec3f(0, 90, 0)},   {Pnt3f(2, 2, 1), Vec3f(0, 90, 0)},
        {Pnt3f(2, 1, 2), Vec3f(0, 180, 0)},  {Pnt3f(1e20F, 1, 2e20F), Vec3f(0, 180, 0)}};
    for (const auto& [size, degrees] : degreesOfSize) {
        Settings settings;
        Planar::initializeOrientation(settings, {}, size);
        EXPECT_EQ(settings.getProjectionRotation(), degrees);
    }
}

RC_GTEST_PROP(PlanarProjection, DefaultsJustCoverTheNodes, (bool isZUp))
{
    const SupportGeometries support;
    const CameraUp up(isZUp);
    std::vector<Pnt3f> points(6);
    for (Pnt3f& point : points)
        point = Pnt3f(mathtest::vector(9));
    const PlacedNode placed(geometryOf(points, {}), randomPlace());
    const auto width = *rc::gen::inRange(0U, 4U);
    const auto height = *rc::gen::inRange(0U, 4U);
    const Settings settings = Planar::getDefaultSettings({placed.node}, width, height);
    RC_PRE(settings.getTextureWidth() > .5F && settings.getTextureHeight() > .5F);
    Planar::apply({placed.node}, set, settings);
    Vec2f low(9, 9);
    Vec2f high(-9, -9);
    for (const Vec2f& uv : placed.uvs(set)) {
        low = Vec2f(std::min(low.x(), uv.x()), std::min(low.y(), uv.y()));
        high = Vec2f(std::max(high.x(), uv.x()), std::max(high.y(), uv.y()));
    }
    const bool hasImage = width != 0 && height != 0;
    RC_ASSERT(settings.getKeepAspectRatio() == hasImage);
    RC_ASSERT(settings.getAspectRatio() == 1.0);
    RC_ASSERT(isNear((low + high) * .5F, Vec2f(.5, .5), 1e-4F));
    RC_ASSERT(std::abs(high[hasImage && width < height ? 1 : 0] - 1) < 1e-4F);
    const float ratio = settings.getTextureWidth() / settings.getTextureHeight();
    RC_ASSERT(std::abs(hasImage ? ratio * static_cast<float>(height) - static_cast<float>(width)
                                : high.y() - 1) < 1e-4F);
}

TEST(PlanarProjection, TellsOfTheTransformsThatItWrites)
{
    Planar::updateManipulator({}); // nothing to show it in
    const SupportGeometries support;
    const auto plane = support.planar.getProjectionTransformNode()->getCore();
    const auto image = support.planar.getPlanarTransformNode()->getCore();
    tiny::NoticeJournal journal;
    journal.watch(plane);
    journal.watch(image);
    Planar::updateManipulator({});
    using T = osg::Transform3D;
    const osg::FieldMask fields = T::TranslationFieldMask | T::RotationFieldMask |
                                  T::ScaleFieldMask | T::RotatePivotFieldMask;
    const std::vector<tiny::NoticeJournal::Notice> expected{{plane->getId(), fields, 1},
                                                            {image->getId(), fields, 1}};
    EXPECT_EQ(journal.notices, expected);
}

} // namespace
