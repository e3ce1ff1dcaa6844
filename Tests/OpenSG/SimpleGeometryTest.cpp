#include "OpenSG/SimpleGeometry.h"

#include "OpenSG/CoreAs.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/TriangleIterator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

using namespace osg;

namespace
{

/// The point of a tube of radius 2 and height 3 that shows a place of a picture.
Pnt3f onTube(const Vec2f& uv)
{
    const double angle = (static_cast<double>(uv.x()) - 0.5) * 2 * std::numbers::pi;
    return Pnt3f(2 * std::sin(angle), 3 * uv.y() - 1.5F, 2 * std::cos(angle));
}

TEST(SimpleGeometry, LaysAPictureUprightOnItsOutside)
{
    const auto volumeOfPrism = [](int sides) {
        return 3 * 4 * sides / 2.0 * std::sin(2 * std::numbers::pi / sides);
    };
    const struct
    {
        NodePtr node;
        unsigned triangles;
        double volume; ///< of the cones from (-1, -1, -1) to the triangles
        std::function<Pnt3f(Vec2f)> pointAt;
    } cases[] = {
        {makePlane(3, 2, 4, 0, NormalAlongX), 8, 2,
         [](Vec2f uv) { return Pnt3f(0, 3 * uv.x() - 1.5F, 2 * uv.y() - 1); }},
        {makePlane(3, 2, 4, 1, NormalAlongY), 8, 2,
         [](Vec2f uv) { return Pnt3f(2 * uv.y() - 1, 0, 3 * uv.x() - 1.5F); }},
        {makePlane(3, 2, 4, 2, NormalAlongZ), 16, 2,
         [](Vec2f uv) { return Pnt3f(3 * uv.x() - 1.5F, 2 * uv.y() - 1, 0); }},
        {makeCylinder(3, 2, 0, true, false, false), 6, volumeOfPrism(3) * 2 / 3, onTube},
        {makeCylinder(3, 2, 7, true, true, true), 28, volumeOfPrism(7), {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const RefPtr<Node> node(c.node);
        const GeometryPtr shape = coreAs<Geometry>(node);
        unsigned triangles = 0;
        double volume = 0;
        for (auto t = shape->beginTriangles(); t != shape->endTriangles(); ++t, ++triangles) {
            Vec2f uvs[3];
            for (unsigned k = 0; k < 3; ++k) {
                uvs[k] = shape->getTexCoords()->getValue(t.getPositionIndex(k));
                const Pnt3f expected = c.pointAt ? c.pointAt(uvs[k]) : t.getPosition(k);
                EXPECT_LT((t.getPosition(k) - expected).length(), 1e-5F);
            }
            const Vec2f a = uvs[1] - uvs[0];
            const Vec2f b = uvs[2] - uvs[0];
            EXPECT_GT(a.x() * b.y() - a.y() * b.x(), 0) << "neither mirrored nor collapsed";
            const Pnt3f p = t.getPosition(0);
            const Vec3f area = (t.getPosition(1) - p).cross(t.getPosition(2) - p) * 0.5F;
            for (unsigned k = 0; k < 3; ++k)
                EXPECT_GT(area.dot(shape->getNormals()->getValue(t.getPositionIndex(k))),
                          0.4F * area.length());
            volume += static_cast<double>((p - Pnt3f(-1, -1, -1)).dot(area)) / 3;
        }
        EXPECT_EQ(triangles, c.triangles);
        EXPECT_NEAR(volume, c.volume, 1e-4);
    }
}

TEST(SimpleGeometry, IsNullForMeasuresThatMakeNoShape)
{
    for (const float bad : {0.0F, -1.0F, std::nanf(""), std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(makePlane(1, bad, 1, 1, NormalAlongZ), NullFC);
        EXPECT_EQ(makeCylinder(bad, 1, 8, true, true, true), NullFC);
    }
    EXPECT_EQ(makePlane(1, 1, 70000, 70000, NormalAlongZ), NullFC);
    EXPECT_EQ(makeCylinder(1, 1, ~0U, true, true, true), NullFC);
}

} // namespace
