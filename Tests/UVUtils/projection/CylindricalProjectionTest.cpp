#include "UVUtils/projection/kyUVCylindricalProjection.h"

#include "UVUtils/projection/CylinderWrap.h"
#include "UVUtils/projection/PlacedNode.h"
#include "UVUtils/projection/SupportGeometries.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <set>

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
    constexpr float Pi = 3.1415927F;
    const std::array<float, 3> closedOf[][2] = {
        {{3.F, -3.F, -3.1F}, {3.F - Turn, -3.F, -3.1F}},
        {{-3.F, 3.F, 3.1F}, {-3.F + Turn, 3.F, 3.1F}},
        {{-3.F, 3.F, -3.1F}, {-3.F, 3.F - Turn, -3.1F}},
        {{3.F, 3.1F, -3.F}, {3.F, 3.1F, -3.F + Turn}},
        {{.1F, 3.F, 2.F}, {.1F, 3.F, 2.F}},
        {{0.F, Pi, Pi}, {Turn, Pi, Pi}},
        {{0.F, 3.1415925F, 3.1415925F}, {0.F, 3.1415925F, 3.1415925F}}, // a bit below pi
        {{-1.6F, 1.6F, 0.F}, {-1.6F, 1.6F, Turn}},                      // around the axis
    };
    for (const auto& [before, closed] : closedOf) {
        std::array<float, 3> angles = before;
        closeOverSeam(angles);
        EXPECT_EQ(angles, closed);
    }
}

TEST(CylindricalProjection, PutsTheCylinderOnZeroToOne)
{
    const struct Case
    {
        double angle;
        double degrees2D;
        Pnt3f point; ///< on the unit cylinder
        Vec2f uv;
    } cases[] = {
        {180, 0, Pnt3f(0, 0, 1), Vec2f(.5, .5)},        // in the middle
        {180, 0, Pnt3f(1, .5, 0), Vec2f(1, 1)},         // at the quarters
        {180, 0, Pnt3f(-1, -.5, 0), Vec2f(0, 0)},       //
        {180, 0, Pnt3f(0.001F, 0, -1), Vec2f(1.5, .5)}, // at the back
        {180, 0, Pnt3f(3, 1, 3), Vec2f(.75, 1.5)},      // above and outside
        {360, 0, Pnt3f(1, 0, 1), Vec2f(.625, .5)},      // all around
        {-180, 0, Pnt3f(1, .5, 0), Vec2f(0, 1)},        // backwards
        {180, 90, Pnt3f(1, 0, 0), Vec2f(.5, 1)},        // with the image turned
    };
    const SupportGeometries support;
    for (const Case& c : cases) {
        Settings settings;
        settings.setProjectionCenter(Vec3f(5, 6, 7));
        settings.setProjectionScale(Vec3f(2, 10, 3));
        settings.setProjectionRotation(Vec3f(0, 90, 90)); // x, y, z go to -z, -x, y
        settings.setProjectionUAngle(c.angle);
        settings.setCylindricRotation2D(c.degrees2D);
        const Pnt3f world(5 - 10 * c.point.y(), 6 + 3 * c.point.z(), 7 - 2 * c.point.x());
        const osg::Matrix place = osg::Matrix::scaling(Vec3f(-2, 1, 4));
        const std::vector<Pnt3f> points(4, below(place, {world})[0]);
        const PlacedNode placed(geometryOf(points, {0, 1, 2}), place);
        Cylindrical::apply({placed.node}, set, settings);
        ASSERT_EQ(placed.uvs(set).size(), 1) << "equal corners become one, and what is none goes";
        EXPECT_TRUE(isNear(placed.uvs(set)[0], c.uv, 1e-3F)) << "of " << &c - cases;
    }
}

RC_GTEST_PROP(CylindricalProjection, KeepsTrianglesInOnePieceAndJoinsWhatIsEqual, ())
{
    // Few vertices, or as many as corners: then some are of no triangle, and others of several.
    std::vector<Pnt3f> points(*rc::gen::element(7U, 30U));
    for (Pnt3f& point : points)
        point = Pnt3f(mathtest::vector(1));
    const Ids corners =
        *rc::gen::container<Ids>(30, rc::gen::inRange(0U, static_cast<unsigned>(points.size())));
    const osg::Matrix place = randomPlace();
    const PlacedNode placed(geometryOf(points, corners), place);
    Cylindrical::apply(placed.node, set, place, {}, 360.F);

    const Ids ids = coreOf(placed.node)->getIndices()->getValues();
    const std::vector<Pnt3f> positions = coreOf(placed.node)->getPositions()->getValues();
    const UVs uvs = placed.uvs(set);
    RC_ASSERT(ids.size() == corners.size() && uvs.size() == positions.size());
    std::set<std::array<float, 5>> distinct;
    for (unsigned v = 0; v < uvs.size(); ++v)
        distinct.insert({positions[v][0], positions[v][1], positions[v][2], uvs[v][0], uvs[v][1]});
    RC_ASSERT(distinct.size() == positions.size());
    for (unsigned first = 0; first < ids.size(); first += 3) {
        std::array<float, 3> us{};
        std::array<float, 3> around{};
        for (unsigned k = 0; k < 3; ++k) {
            const Pnt3f p = positions[ids[first + k]];
            RC_ASSERT(p == points[corners[first + k]]);
            us[k] = uvs[ids[first + k]].x();
            around[k] = std::atan2(p.x(), p.z()) / (2 * std::numbers::pi_v<float>)+.5F;
            if (std::hypot(p.x(), p.z()) > .01F)
                RC_ASSERT(std::abs(std::remainder(us[k] - around[k], 1.F)) < 1e-3F);
            RC_ASSERT(std::abs(uvs[ids[first + k]].y() - (p.y() + .5F)) < 1e-4F);
        }
        std::ranges::sort(us);
        std::ranges::sort(around);
        const float gap =
            std::max({around[1] - around[0], around[2] - around[1], around[0] + 1 - around[2]});
        if (gap > .51F) // else the triangle goes around the axis
            RC_ASSERT(us[2] - us[0] < .5F);
    }
}

TEST(CylindricalProjection, LeavesOtherUVsAndTakesASingularBodyForNone)
{
    const osg::GeometryPtr geometry =
        geometryOf({Pnt3f(0, 0, 1), Pnt3f(1, 0, 1), Pnt3f(0, 2, 1)}, {2, 0, 1});
    const PlacedNode placed(geometry, osg::Matrix::translation(Vec3f(0, 1, 0)));
    geometry->setTexSlot(set, tiny::texCoords(UVs(5, Vec2f(7, 8))));
    Cylindrical::apply(placed.node, set, osg::Matrix::scaling(Vec3f(1, 0, 1)), {}, 180.F);
    const Vec2f expected[] = {Vec2f(.5, 1.5), Vec2f(.75, 1.5), Vec2f(.5, 3.5), Vec2f(7, 8),
                              Vec2f(7, 8)};
    for (unsigned i = 0; i < 5; ++i)
        EXPECT_TRUE(isNear(placed.uvs(set).at(i), expected[i], 1e-5F));
}

TEST(CylindricalProjection, FitsBoxAndImage)
{
    // A box of 2 x 10 x 4 about (1, 1, 1).
    const osg::RefPtr<osg::Node> box(nodeOf(geometryOf({Pnt3f(0, -4, -1), Pnt3f(2, 6, 3)}, {})));
    const float half = 2.F * 6.2831855F / 2.F; // of the way around
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
        {true, 150, 300, 360, Vec3f(2, half, 2), 0}, // would go around 1.6 times
        {false, 0, 500, 180, Vec3f(5, 4, 5), -90},
        {false, 150, 300, 114.59156, Vec3f(5, 4, 5), -90}, // from the radius and height 5
    };
    for (const Case& c : cases) {
        const CameraUp up(c.isZUp);
        const Settings settings = Cylindrical::getDefaultSettings({box}, 300, c.imageHeight);
        EXPECT_EQ(settings.getKeepAspectRatio(), c.imageHeight != 0);
        EXPECT_EQ(settings.getAspectRatio(), c.imageHeight != 0 ? 2.0 : 1.0);
        EXPECT_EQ(settings.getTextureWidth(), c.width);
        EXPECT_NEAR(settings.getProjectionUAngle(), c.angle, 1e-4);
        EXPECT_TRUE(isNear(settings.getProjectionScale(), c.scale, 1e-5F));
        EXPECT_EQ(settings.getProjectionRotation(), Vec3f(c.degreesAboutX, 0, 0));
        EXPECT_EQ(settings.getProjectionCenter(), Vec3f(1, 1, 1));
    }
    const CameraUp up(true);
    Settings turned;
    turned.setProjectionRotation(Vec3f(90, 90, 0));
    Cylindrical::getScaleAndCenterFromGeometry({box}, turned);
    EXPECT_TRUE(isNear(turned.getProjectionScale(), Vec3f(5, 2, 5), 1e-5F));
}

} // namespace
