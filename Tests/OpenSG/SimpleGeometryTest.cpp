#include "OpenSG/SimpleGeometry.h"

#include "OpenSG/RefPtr.h"
#include "OpenSG/TriangleIterator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace osg;

namespace
{

/// What the triangles of a shape add up to.
struct Sums
{
    Vec3f area; ///< along the normals
    float volume = 0;
};

/// Adds up, and checks that each triangle is wound as its normals say and shows a picture upright
/// and not mirrored.
Sums checkedSums(const Geometry& shape)
{
    EXPECT_EQ(shape.getNormals()->getSize(), shape.getPositions()->getSize());
    EXPECT_EQ(shape.getTexCoords()->getSize(), shape.getPositions()->getSize());
    Sums sums;
    for (auto t = shape.beginTriangles(); t != shape.endTriangles(); ++t) {
        Vec3f corners[3];
        Vec2f uvs[3];
        for (unsigned k = 0; k < 3; ++k) {
            corners[k] = t.getPosition(k).subZero();
            uvs[k] = shape.getTexCoords()->getValue(t.getPositionIndex(k));
        }
        const Vec3f area = (corners[1] - corners[0]).cross(corners[2] - corners[0]) * 0.5F;
        for (unsigned k = 0; k < 3; ++k)
            EXPECT_GT(area.dot(shape.getNormals()->getValue(t.getPositionIndex(k))),
                      0.4F * area.length());
        const Vec2f a = uvs[1] - uvs[0];
        const Vec2f b = uvs[2] - uvs[0];
        EXPECT_GT(a.x() * b.y() - a.y() * b.x(), 0);
        sums.area += area;
        sums.volume += corners[0].dot(area) / 3;
    }
    return sums;
}

const Geometry& coreOf(const RefPtr<Node>& node)
{
    return *dcast<Geometry>(node->getCore());
}

TEST(MakePlane, LiesInItsCoordinatePlaneWithThePictureUpright)
{
    for (const unsigned axis : {0U, 1U, 2U}) {
        SCOPED_TRACE(axis);
        const RefPtr<Node> node(makePlane(3, 2, 4, axis, CoordinateSystem(axis)));
        const Geometry& plane = coreOf(node);
        EXPECT_EQ(plane.getIndices()->getSize(), 6U * 4 * std::max(axis, 1U));
        Vec3f area;
        area[axis] = 6;
        EXPECT_LT((checkedSums(plane).area - area).length(), 1e-5F);
        for (unsigned i = 0; i < plane.getPositions()->getSize(); ++i) {
            const Vec2f uv = plane.getTexCoords()->getValue(i);
            Pnt3f expected;
            expected[(axis + 1) % 3] = 3 * uv.x() - 1.5F;
            expected[(axis + 2) % 3] = 2 * uv.y() - 1;
            EXPECT_LT((plane.getPositions()->getValue(i) - expected).length(), 1e-6F);
        }
    }
}

TEST(MakeCylinder, IsClosedWithAllPartsAndLaysAPictureAroundTheSide)
{
    const RefPtr<Node> whole(makeCylinder(3, 2, 7, true, true, true));
    const Sums sums = checkedSums(coreOf(whole));
    EXPECT_LT(sums.area.length(), 1e-4F);
    EXPECT_NEAR(sums.volume, 3 * 4 * 3.5 * std::sin(2 * std::numbers::pi / 7), 1e-4);

    const RefPtr<Node> side(makeCylinder(3, 2, 0, true, false, false));
    const Geometry& tube = coreOf(side);
    EXPECT_EQ(tube.getIndices()->getSize(), 3U * 6) << "no less than three sides";
    for (unsigned i = 0; i < tube.getPositions()->getSize(); ++i) {
        const Pnt3f p = tube.getPositions()->getValue(i);
        const Vec2f uv = tube.getTexCoords()->getValue(i);
        const double angle = (static_cast<double>(uv.x()) - 0.5) * 2 * std::numbers::pi;
        EXPECT_LT((p - Pnt3f(2 * std::sin(angle), 3 * uv.y() - 1.5F, 2 * std::cos(angle))).length(),
                  1e-5F);
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
