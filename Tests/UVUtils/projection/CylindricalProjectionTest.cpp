#include "UVUtils/projection/kyUVCylindricalProjection.h"

#include "UVUtils/projection/CylinderWrap.h"
#include "UVUtils/projection/PlacedNode.h"
#include "UVUtils/projection/SupportGeometries.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

namespace
{

using Settings = kyUVCylindricalProjectionSettings;
using mathtest::isNear;
using osg::Pnt3f;
using osg::Vec3f;
constexpr auto set = kyUVTypes::UVSet0;

struct Cylindrical : kyUVCylindricalProjection
{
    using kyUVCylindricalProjection::apply;
};

TEST(CylinderWrap, ClosesTrianglesOverTheSeam)
{
    constexpr float Turn = 6.2831855F;
    const struct Case
    {
        const char* name;
        std::array<float, 3> angles;
        std::array<float, 3> closed;
    } cases[] = {
        {"first, down", {3.F, -3.F, -3.1F}, {3.F - Turn, -3.F, -3.1F}},
        {"first, up", {-3.F, 3.F, 3.1F}, {-3.F + Turn, 3.F, 3.1F}},
        {"second, down", {-3.F, 3.F, -3.1F}, {-3.F, 3.F - Turn, -3.1F}},
        {"third, up", {3.F, 3.1F, -3.F}, {3.F, 3.1F, -3.F + Turn}},
        {"in front", {.1F, 3.F, 2.F}, {.1F, 3.F, 2.F}},
        {"at pi", {0.F, 3.1415927F, 3.1415927F}, {Turn, 3.1415927F, 3.1415927F}},
        {"below pi", {0.F, 3.1415925F, 3.1415925F}, {0.F, 3.1415925F, 3.1415925F}},
        {"one pair, around the axis", {-1.6F, 1.6F, 0.F}, {-1.6F, 1.6F, Turn}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::array<float, 3> angles = c.angles;
        closeOverSeam(angles);
        EXPECT_EQ(angles, c.closed);
    }
}

TEST(CylindricalProjection, PutsTheCylinderOnZeroToOne)
{
    const struct Case
    {
        const char* name;
        double angle;
        double degrees2D;
        Pnt3f point; ///< on the unit cylinder
        Vec2f uv;
    } cases[] = {
        {"middle", 180, 0, Pnt3f(0, 0, 1), Vec2f(.5, .5)},
        {"quarter", 180, 0, Pnt3f(1, .5, 0), Vec2f(1, 1)},
        {"other quarter", 180, 0, Pnt3f(-1, -.5, 0), Vec2f(0, 0)},
        {"back", 180, 0, Pnt3f(0.001F, 0, -1), Vec2f(1.5, .5)},
        {"above and outside", 180, 0, Pnt3f(3, 1, 3), Vec2f(.75, 1.5)},
        {"all around", 360, 0, Pnt3f(1, 0, 1), Vec2f(.625, .5)},
        {"backwards", -180, 0, Pnt3f(1, .5, 0), Vec2f(0, 1)},
        {"turned image", 180, 90, Pnt3f(1, 0, 0), Vec2f(.5, 1)},
    };
    const SupportGeometries support;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Settings settings;
        settings.setProjectionCenter(Vec3f(5, 6, 7));
        settings.setProjectionScale(Vec3f(2, 10, 3));
        settings.setProjectionRotation(Vec3f(0, 90, 90)); // x, y, z go to -z, -x, y
        settings.setProjectionUAngle(c.angle);
        settings.setCylindricRotation2D(c.degrees2D);
        const Pnt3f world(5 - 10 * c.point.y(), 6 + 3 * c.point.z(), 7 - 2 * c.point.x());
        const osg::Matrix place = osg::Matrix::scaling(Vec3f(-2, 1, 4));
        const std::vector<Pnt3f> corners(3, below(place, {world})[0]);
        const PlacedNode placed(geometryOf(corners, {0, 1, 2}), place);
        Cylindrical::apply({placed.node}, set, settings);
        ASSERT_EQ(placed.uvs(set).size(), 1) << "equal corners become one";
        EXPECT_TRUE(isNear(placed.uvs(set)[0], c.uv, 1e-3F));
    }
}

/// A tube of 24 sides around y, of two rings of quads, whose first column is at an angle.
osg::GeometryPtr tube(float firstAngle)
{
    constexpr unsigned Sides = 24;
    std::vector<Pnt3f> positions;
    Ids ids;
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned side = 0; side < Sides; ++side) {
            const float a =
                firstAngle + static_cast<float>(side) * 2 * std::numbers::pi_v<float> / Sides;
            positions.emplace_back(std::sin(a), static_cast<float>(row) / 2 - .5F, std::cos(a));
            const unsigned v = row * Sides + side;
            const unsigned next = row * Sides + (side + 1) % Sides;
            if (row < 2)
                ids.insert(ids.end(), {v, next, next + Sides, v, next + Sides, v + Sides});
        }
    return geometryOf(positions, ids);
}

RC_GTEST_PROP(CylindricalProjection, KeepsTheTrianglesOfATubeInOnePiece, ())
{
    const osg::GeometryPtr geometry = tube(mathtest::number(4));
    const Ids idsBefore = geometry->getIndices()->getValues();
    const std::vector<Pnt3f> before = geometry->getPositions()->getValues();
    const osg::Matrix place = randomPlace();
    const PlacedNode placed(geometry, place);
    Cylindrical::apply(placed.node, set, place, {}, 360.F);

    const Ids ids = geometry->getIndices()->getValues();
    const std::vector<Pnt3f> positions = geometry->getPositions()->getValues();
    const UVs uvs = placed.uvs(set);
    RC_ASSERT(ids.size() == idsBefore.size());
    RC_ASSERT(uvs.size() == positions.size());
    RC_ASSERT(positions.size() <= before.size() + 2 * 4); // it parts along the seam only
    for (unsigned i = 0; i < ids.size(); ++i) {
        const Pnt3f p = positions[ids[i]];
        const Vec2f uv = uvs[ids[i]];
        RC_ASSERT(p == before[idsBefore[i]]);
        RC_ASSERT(std::abs(uv.x() - uvs[ids[i / 3 * 3]].x()) < .1F);
        const float around = std::atan2(p.x(), p.z()) / (2 * std::numbers::pi_v<float>)+.5F;
        RC_ASSERT(std::abs(std::remainder(uv.x() - around, 1.F)) < 1e-4F);
        RC_ASSERT(std::abs(uv.y() - (p.y() + .5F)) < 1e-4F);
    }
}

TEST(CylindricalProjection, LeavesOtherUVsAndTakesASingularBodyForNone)
{
    const osg::GeometryPtr geometry =
        geometryOf({Pnt3f(0, 0, 1), Pnt3f(1, 0, 1), Pnt3f(0, 2, 1)}, {0, 1, 2});
    const PlacedNode placed(geometry, osg::Matrix::translation(Vec3f(0, 1, 0)));
    geometry->setTexSlot(set, tiny::texCoords(UVs(5, Vec2f(7, 8))));
    Cylindrical::apply(placed.node, set, osg::Matrix::scaling(Vec3f(1, 0, 1)), {}, 180.F);
    const Vec2f expected[] = {Vec2f(.5, 1.5), Vec2f(.75, 1.5), Vec2f(.5, 3.5), Vec2f(7, 8),
                              Vec2f(7, 8)};
    for (unsigned i = 0; i < 5; ++i)
        EXPECT_TRUE(isNear(placed.uvs(set).at(i), expected[i], 1e-5F));
}

/// A box of 2 x 10 x 4 about (1, 1, 1).
osg::RefPtr<osg::Node> boxNode()
{
    return osg::RefPtr<osg::Node>(nodeOf(geometryOf({Pnt3f(0, -4, -1), Pnt3f(2, 6, 3)}, {})));
}

TEST(CylindricalProjection, FitsTheBoxAsItIsTurned)
{
    const CameraUp up(true);
    Settings settings;
    settings.setProjectionRotation(Vec3f(90, 90, 0));
    Cylindrical::getScaleAndCenterFromGeometry({boxNode().get()}, settings);
    EXPECT_TRUE(isNear(settings.getProjectionScale(), Vec3f(5, 2, 5), 1e-5F));
    EXPECT_EQ(settings.getProjectionCenter(), Vec3f(1, 1, 1));
}

TEST(CylindricalProjection, DefaultsFitBoxAndImage)
{
    const float third = 2.F * 6.2831855F / 3.F; // of the way around
    const struct Case
    {
        bool isZUp;
        unsigned imageHeight; ///< for a width of 300
        float width;
        double angle;
        Vec3f scale;
        float degreesAboutX;
    } cases[] = {
        {true, 0, 500, 180, Vec3f(2, 10, 2), 0},
        {true, 100, 300, 360, Vec3f(2, third, 2), 0},
        {false, 0, 500, 180, Vec3f(5, 4, 5), -90},
        {false, 100, 300, 171.88734, Vec3f(5, 4, 5), -90}, // from the radius and height 5
    };
    for (const Case& c : cases) {
        const CameraUp up(c.isZUp);
        const Settings settings =
            Cylindrical::getDefaultSettings({boxNode().get()}, 300, c.imageHeight);
        EXPECT_EQ(settings.getKeepAspectRatio(), c.imageHeight != 0);
        EXPECT_EQ(settings.getAspectRatio(), c.imageHeight != 0 ? 3.0 : 1.0);
        EXPECT_EQ(settings.getTextureWidth(), c.width);
        EXPECT_NEAR(settings.getProjectionUAngle(), c.angle, 1e-4);
        EXPECT_TRUE(isNear(settings.getProjectionScale(), c.scale, 1e-5F));
        EXPECT_EQ(settings.getProjectionRotation(), Vec3f(c.degreesAboutX, 0, 0));
    }
}

} // namespace
