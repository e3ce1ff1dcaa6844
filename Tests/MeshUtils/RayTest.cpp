#include "TriangleSoups.h"

#include "MeshUtils/RayOnTriangle.h"
#include "MeshUtils/SurfaceTriangles.h"
#include "MeshUtils/kyMeshPointQuery.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

constexpr float Endless = std::numeric_limits<float>::infinity();

/// How far the hit of a ray is from the place at its distance, in floats of the size at hand.
double offTheRay(const kyPointOnGeometry& hit, const osg::Pnt3f& origin,
                 const osg::Vec3f& direction, float distance)
{
    using Vec3d = osg::Vector<double, 3>;
    const Vec3d way =
        Vec3d(direction) * (static_cast<double>(distance) / Vec3d(direction).length());
    const Vec3d start(origin.subZero());
    double size = start.length() + way.length();
    Vec3d place;
    for (unsigned int k = 0; k < 3; ++k) {
        const Vec3d corner(hit.geometry->getPositions()->getValue(hit.vertices[k]).subZero());
        place += corner * static_cast<double>(hit.weights[k]);
        size += corner.length();
    }
    return (place - start - way).length() / (1e-7 * size + 1e-44);
}

TEST(Ray, TheTreeLeavesOutNothingThatATriangleWouldGive)
{
    for (const Soup& soup : hardSoups()) {
        SCOPED_TRACE(soup.name);
        kyMeshPointQuery query;
        query.build(soup.geometry);
        const SurfaceTriangles triangles(soup.geometry);
        for (std::size_t i = 0; i < soup.points.size(); ++i) {
            const osg::Pnt3f& origin = soup.points[i];
            const osg::Pnt3f& target = soup.points[7 * i % soup.points.size()];
            const osg::Vec3f direction =
                i % 3 == 0 || target == origin ? osg::Vec3f(0, 0, -1) : target - origin;
            RaySearch search(Ray(origin, direction), Endless);
            for (const SortedTriangle& triangle : triangles.packed())
                search.offer(triangle);
            kyPointOnGeometry result;
            float distance = -1;
            ASSERT_EQ(query.castRay(origin, direction, Endless, result, distance),
                      search.hasFound());
            if (!search.hasFound())
                continue;
            EXPECT_EQ(result.triangle, search.triangle().number);
            EXPECT_EQ(distance, static_cast<float>(search.hit().distance));
            EXPECT_LT(offTheRay(result, origin, direction, distance), 4);
            EXPECT_FALSE(query.castRay(origin, direction, distance, result, distance));
        }
    }
}

TEST(Ray, DoesNotSlipThroughWhereTrianglesMeet)
{
    std::mt19937 random(9);
    const auto sheet = flatGrid(10);
    std::vector<osg::Pnt3f> positions = sheet->getPositions()->getValues();
    for (osg::Pnt3f& position : positions)
        position += randomPoint(random, 0.3F).subZero();
    sheet->getPositions()->setValues(positions);
    kyMeshPointQuery query;
    query.build(sheet);
    for (unsigned int i = 0; i < 4000; ++i) {
        // At a vertex, an edge or the middle of a triangle, from one side or the other.
        const unsigned int vertex = 11 * (2 + i % 7) + 2 + i / 7 % 7;
        const osg::Pnt3f& a = positions[vertex];
        const float t = i % 3 == 0 ? 0.F : static_cast<float>(i % 100) / 100.F;
        const float s = i % 3 == 2 ? (1 - t) / 2 : 0.F;
        const osg::Pnt3f target =
            a + (positions[vertex + 12] - a) * t + (positions[vertex + 1] - a) * s;
        const osg::Vec3f across = randomPoint(random, 0.4F).subZero();
        const osg::Pnt3f origin = target + across + osg::Vec3f(0, 0, i % 2 == 0 ? 9.F : -9.F);
        kyPointOnGeometry result;
        float distance = 0;
        ASSERT_TRUE(query.castRay(origin, target - origin, Endless, result, distance)) << i;
        EXPECT_LT(distance, (target - origin).length() * 1.00001F) << i;
    }
}

TEST(Ray, EqualDistancesGoToTheLowestTriangle)
{
    // Straight down on vertices, edges, diagonals and middles, and past the grid's border.
    const auto grid = flatGrid(6);
    kyMeshPointQuery query;
    query.build(grid);
    for (float x = -0.5F; x <= 6.5F; x += 0.5F)
        for (float y = -0.5F; y <= 6.5F; y += 0.5F) {
            const osg::Pnt3f above(x, y, 2.F);
            kyPointOnGeometry down;
            kyPointOnGeometry closest;
            float distance = 0;
            const bool isOver = std::min(x, y) >= 0 && std::max(x, y) <= 6;
            ASSERT_EQ(query.castRay(above, osg::Vec3f(0, 0, -4), 3.F, down, distance), isOver);
            query.findClosestPoint(above, closest);
            EXPECT_EQ(down.triangle, isOver ? closest.triangle : -1) << x << ' ' << y;
            EXPECT_EQ(distance, isOver ? 2.F : 0.F);
        }
}

TEST(Ray, IsRefusedIfItIsNone)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const auto grid = flatGrid(2);
    kyMeshPointQuery query;
    query.build(grid);
    const osg::Vec3f down(0, 0, -1);
    const osg::Pnt3f above(0.75F, 0.25F, 1.F);
    struct Case
    {
        osg::Pnt3f origin;
        osg::Vec3f direction;
        float maxDistance;
        bool isHit;
    };
    const Case cases[] = {{above, down, Endless, true},
                          {above, down * 1e-30F, 1.5F, true},
                          {above, down, 1.F, false},
                          {above, down, nan, false},
                          {above, osg::Vec3f(), Endless, false},
                          {above, osg::Vec3f(0, nan, 1), Endless, false},
                          {osg::Pnt3f(nan, 0, 0), down, Endless, false},
                          {above, -down, Endless, false},
                          {osg::Pnt3f(-1, 0.5F, 0), osg::Vec3f(1, 0, 0), Endless, false},
                          {osg::Pnt3f(0.75F, 0.25F, 1e25F), down, Endless, true},
                          {osg::Pnt3f(0.75F, 0.25F, 0.F), down, Endless, true}};
    for (const Case& c : cases) {
        kyPointOnGeometry result;
        float distance = -5;
        EXPECT_EQ(query.castRay(c.origin, c.direction, c.maxDistance, result, distance), c.isHit)
            << &c - cases;
        EXPECT_EQ(distance, c.isHit ? c.origin.z() : -5.F);
        EXPECT_EQ(static_cast<bool>(result.geometry), c.isHit);
    }
}

} // namespace
