#include "TriangleSoups.h"

#include "MeshUtils/kyGeoSampler.h"
#include "MeshUtils/kyMeshPointQuery.h"
#include "MeshUtils/kyTriangleOctree.h"
#include "OpenSG/TriangleIterator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>

namespace
{

using Vec3l = osg::Vector<long double, 3>;

/// All of an answer, bit by bit.
auto bitsOf(const kyPointOnGeometry& p)
{
    const auto bits = [](float weight) { return std::bit_cast<std::uint32_t>(weight); };
    return std::tuple(p.geometry.get(), p.triangle, p.vertices[0], p.vertices[1], p.vertices[2],
                      bits(p.weights[0]), bits(p.weights[1]), bits(p.weights[2]));
}

long double distanceToEdge(const Vec3l& point, const Vec3l& a, const Vec3l& b)
{
    const Vec3l edge = b - a;
    const long double square = edge.squareLength();
    const long double t = square > 0 ? (point - a).dot(edge) / square : 0;
    return (point - a - edge * std::min(1.0L, std::max(0.0L, t))).length();
}

/// By a way of its own: inside a triangle if the three triangles that the foot makes with the edges
/// turn like the whole.
long double distanceTo(const Vec3l& point, const std::array<Vec3l, 3>& corners)
{
    const Vec3l normal = (corners[1] - corners[0]).cross(corners[2] - corners[0]);
    long double distance = std::numeric_limits<long double>::infinity();
    bool isInside = normal.length() > 0;
    for (unsigned int k = 0; k < 3; ++k) {
        const Vec3l& a = corners[k];
        const Vec3l& b = corners[(k + 1) % 3];
        distance = std::min(distance, distanceToEdge(point, a, b));
        isInside = isInside && (b - a).cross(point - a).dot(normal) >= 0;
    }
    return isInside ? std::abs((point - corners[0]).dot(normal)) / normal.length() : distance;
}

/// The least distance from a point, and the first triangle that has it.
std::pair<long double, int> nearest(const osg::Geometry& geometry, const osg::Pnt3f& point)
{
    std::pair<long double, int> best(std::numeric_limits<long double>::infinity(), -1);
    for (auto t = geometry.beginTriangles(); t != geometry.endTriangles(); ++t) {
        std::array<Vec3l, 3> corners;
        bool isUsable = true;
        for (unsigned int k = 0; k < 3; ++k) {
            corners[k] = Vec3l(t.getPosition(k).subZero());
            isUsable = isUsable && t.getPositionIndex(k) < geometry.getPositions()->getSize() &&
                       std::isfinite(corners[k].length());
        }
        if (!isUsable)
            continue;
        const long double distance = distanceTo(Vec3l(point.subZero()), corners);
        if (distance < best.first)
            best = {distance, static_cast<int>(t.getIndex())};
    }
    return best;
}

TEST(ClosestPoint, AllStructuresGiveTheSameBitsAndTheNearestPoint)
{
    for (const Soup& soup : hardSoups()) {
        SCOPED_TRACE(soup.name);
        kyMeshPointQuery query;
        query.build(soup.geometry);
        kyTriangleOctree octree(soup.geometry);
        octree.build();
        kyPointOnGeometry guessed;
        for (const osg::Pnt3f& point : soup.points) {
            SCOPED_TRACE(testing::PrintToString(std::tuple(point[0], point[1], point[2])));
            kyPointOnGeometry plain;
            ASSERT_TRUE(kyGeoSampler::getClosestPoint(soup.geometry, point, plain, -1));
            kyPointOnGeometry other;
            ASSERT_TRUE(query.findClosestPoint(point, other));
            EXPECT_EQ(bitsOf(other), bitsOf(plain));
            ASSERT_TRUE(octree.getClosestPoint(point, other));
            EXPECT_EQ(bitsOf(other), bitsOf(plain));
            ASSERT_TRUE(query.findClosestPoint(point, guessed));
            EXPECT_EQ(bitsOf(guessed), bitsOf(plain)) << "the last answer as a guess";
            guessed.weights[guessed.triangle % 3] = point.x() > 0 ? NAN : 1 - 3 * point.y();

            Vec3l found;
            for (unsigned int k = 0; k < 3; ++k)
                found +=
                    Vec3l(soup.geometry->getPositions()->getValue(plain.vertices[k]).subZero()) *
                    static_cast<long double>(plain.weights[k]);
            const Vec3l at(point.subZero());
            const long double rounding = 1e-6L * (at.length() + found.length()) + 1e-44L;
            EXPECT_NEAR(static_cast<double>((found - at).length() / rounding),
                        static_cast<double>(nearest(*soup.geometry, point).first / rounding), 1);
        }
    }
}

TEST(ClosestPoint, EqualDistancesGoToTheLowestTriangle)
{
    // On, above and beside the grid's vertices, edges and diagonals, where all is exact.
    const auto grid = flatGrid(8);
    kyMeshPointQuery query;
    query.build(grid);
    kyPointOnGeometry result; // each answer is a guess for the next
    for (float x = -1; x <= 9; x += 0.5F)
        for (float y = -1; y <= 9; y += 0.5F)
            for (const float z : {0.F, 0.25F, -3.F}) {
                ASSERT_TRUE(query.findClosestPoint(osg::Pnt3f(x, y, z), result));
                EXPECT_EQ(result.triangle, nearest(*grid, osg::Pnt3f(x, y, z)).second)
                    << x << ' ' << y;
            }
}

TEST(ClosestPoint, APointOnASharedEdgeIsEquallyFarFromBothTriangles)
{
    // Two triangles that share an edge, in both orders: nothing is exact here.
    std::mt19937 random(5);
    int onEdge = 0;
    for (int run = 0; run < 200; ++run) {
        std::vector<osg::Pnt3f> p(4);
        std::ranges::generate(p, [&] { return randomPoint(random, 1.F); });
        // Seen from the far side of both triangles, only the edge is near.
        const osg::Vec3f middle = (p[0].subZero() + p[1].subZero()) * 0.5F;
        const osg::Vec3f inner = (p[2].subZero() + p[3].subZero()) * 0.5F;
        const osg::Pnt3f point(middle + (middle - inner) * 0.4F);
        kyPointOnGeometry first;
        kyPointOnGeometry second;
        kyGeoSampler::getClosestPoint(soupOf(p, {0, 1, 2, 1, 0, 3}), point, first);
        kyGeoSampler::getClosestPoint(soupOf(p, {0, 3, 1, 2, 0, 1}), point, second);
        if (first.weights[2] != 0.F || second.weights[1] != 0.F)
            continue;
        ++onEdge;
        EXPECT_EQ(std::pair(first.triangle, second.triangle), std::pair(0, 0)) << run;
    }
    EXPECT_GT(onEdge, 50);
}

TEST(ClosestPoint, NothingIsFoundWhereThereIsNothing)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const auto grid = flatGrid(2);
    const auto outOfRange = soupOf({osg::Pnt3f()}, {0, 0, 7});
    const auto empty = osg::RefPtr<osg::Geometry>(osg::Geometry::create());
    const std::tuple<osg::GeometryPtr, osg::Pnt3f, bool> cases[] = {
        {osg::NullFC, osg::Pnt3f(), false},
        {empty.get(), osg::Pnt3f(), false},
        {outOfRange.get(), osg::Pnt3f(), false},
        {grid.get(), osg::Pnt3f(0, nan, 0), true},
        {grid.get(), osg::Pnt3f(std::numeric_limits<float>::infinity(), 0, 0), true}};
    for (const auto& [geometry, point, isValid] : cases) {
        kyMeshPointQuery query;
        kyTriangleOctree octree(geometry);
        for (int build = 0; build < 2; ++build) {
            float distance = 7.F;
            kyPointOnGeometry result;
            EXPECT_FALSE(query.castRay(point, osg::Vec3f(0, 0, 1), 9.F, result, distance));
            result.geometry = grid;
            result.triangle = 1 << 30;
            EXPECT_FALSE(query.findClosestPoint(point, result));
            EXPECT_FALSE(result.geometry);
            EXPECT_FALSE(octree.getClosestPoint(point, result));
            EXPECT_FALSE(kyGeoSampler::getClosestPoint(geometry, point, result));
            EXPECT_EQ(result.triangle, -1);
            EXPECT_EQ(result.getPosition(), osg::Pnt3f());
            EXPECT_EQ(result.getUV(0), osg::Vec2f());
            query.build(geometry);
            octree.build();
            EXPECT_EQ(query.isValid(), isValid);
        }
    }
}

TEST(ClosestPoint, TheAnswerHasPositionAndTextureCoordinates)
{
    const auto grid = tiny::quad();
    grid->setTexSlot(3, tiny::texCoords({osg::Vec2f(0, 4), osg::Vec2f(8, 4), osg::Vec2f(8, 12),
                                         osg::Vec2f(0, 12)}));
    kyPointOnGeometry result;
    ASSERT_TRUE(kyGeoSampler::getClosestPoint(grid, osg::Pnt3f(0.25F, 0.5F, 3.F), result));
    EXPECT_EQ(result.triangle, 1);
    EXPECT_EQ(result.getPosition(), osg::Pnt3f(0.25F, 0.5F, 0.F));
    EXPECT_EQ(result.getUV(3), osg::Vec2f(2, 8));
    EXPECT_EQ(result.getUV(2), osg::Vec2f());
    EXPECT_EQ(result.getUV(8), osg::Vec2f());
}

} // namespace
