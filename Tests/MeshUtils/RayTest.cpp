#include "TriangleSoups.h"

#include "MeshUtils/RayOnTriangle.h"
#include "MeshUtils/SurfaceTriangles.h"
#include "MeshUtils/kyMeshPointQuery.h"
#include "OpenSG/TriangleIterator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

using Vec3d = osg::Vector<double, 3>;

constexpr float Endless = std::numeric_limits<float>::infinity();

/// The distance of the nearest hit by a plain loop (the method of Moeller and Trumbore).
double nearestHit(const osg::Geometry& geometry, const osg::Pnt3f& origin, const osg::Vec3f& ray)
{
    const Vec3d direction = Vec3d(ray) * (1 / Vec3d(ray).length());
    double nearest = std::numeric_limits<double>::infinity();
    for (auto t = geometry.beginTriangles(); t != geometry.endTriangles(); ++t) {
        const Vec3d a(t.getPosition(0).subZero());
        const Vec3d ab = Vec3d(t.getPosition(1).subZero()) - a;
        const Vec3d ac = Vec3d(t.getPosition(2).subZero()) - a;
        const Vec3d from = Vec3d(origin.subZero()) - a;
        const double volume = direction.cross(ac).dot(ab);
        const double v = direction.cross(ac).dot(from) / volume;
        const double w = from.cross(ab).dot(direction) / volume;
        const double distance = from.cross(ab).dot(ac) / volume;
        if (v >= 0 && w >= 0 && v + w <= 1 && distance >= 0)
            nearest = std::min(nearest, distance);
    }
    return nearest;
}

TEST(Ray, HitsWhatAPlainLoopHits)
{
    std::mt19937 random(3);
    std::vector<osg::Pnt3f> positions;
    tiny::Ids ids;
    for (unsigned int i = 0; i < 300; ++i) {
        positions.push_back(randomPoint(random, 1.F));
        ids.insert(ids.end(), {i, (7 * i + 1) % 300, (3 * i + 50) % 300});
    }
    for (const float size : {1.F, 1e-15F, 1e15F}) {
        std::vector<osg::Pnt3f> scaled = positions;
        for (osg::Pnt3f& position : scaled)
            position = osg::Pnt3f(position.subZero() * size);
        const auto soup = soupOf(scaled, ids);
        kyMeshPointQuery query;
        query.build(soup);
        int hits = 0;
        for (int i = 0; i < 300; ++i) {
            const osg::Pnt3f origin = randomPoint(random, 3 * size);
            const osg::Vec3f direction = (randomPoint(random, size) - origin) * (1 / size);
            const double expected = nearestHit(*soup, origin, direction);
            kyPointOnGeometry result;
            float distance = 0;
            const bool isHit = query.castRay(origin, direction, Endless, result, distance);
            ASSERT_EQ(isHit, std::isfinite(expected)) << i;
            if (!isHit)
                continue;
            ++hits;
            EXPECT_FLOAT_EQ(distance, static_cast<float>(expected));
            const osg::Pnt3f there = origin + direction.normalized() * distance;
            EXPECT_LT((result.getPosition() - there).length(), 1e-5F * size);
            EXPECT_FALSE(query.castRay(origin, direction, distance, result, distance));
            EXPECT_TRUE(query.castRay(origin, direction, distance * 1.001F, result, distance));
        }
        EXPECT_GT(hits, 50);
    }
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
        // At a vertex or a point of an edge off the border, from one side or the other.
        const unsigned int vertex = 11 * (2 + i % 7) + 2 + i / 7 % 7;
        const float t = i % 3 == 0 ? 0.F : static_cast<float>(i % 100) / 100.F;
        const osg::Pnt3f target =
            positions[vertex] + (positions[vertex + 12] - positions[vertex]) * t;
        const osg::Vec3f across = randomPoint(random, 0.4F).subZero();
        const osg::Pnt3f origin = target + across + osg::Vec3f(0, 0, i % 2 == 0 ? 9.F : -9.F);
        kyPointOnGeometry result;
        float distance = 0;
        EXPECT_TRUE(query.castRay(origin, target - origin, Endless, result, distance)) << i;
    }
}

TEST(Ray, EqualDistancesGoToTheLowestTriangle)
{
    // Straight down on vertices, edges, diagonals and middles, and past the grid's border.
    const auto grid = flatGrid(6);
    kyMeshPointQuery query;
    query.build(grid);
    for (int x = -1; x <= 13; ++x)
        for (int y = -1; y <= 13; ++y) {
            const osg::Pnt3f above(0.5F * static_cast<float>(x), 0.5F * static_cast<float>(y), 2.F);
            kyPointOnGeometry down;
            kyPointOnGeometry closest;
            float distance = 0;
            const bool isOver = x >= 0 && y >= 0 && x <= 12 && y <= 12;
            ASSERT_EQ(query.castRay(above, osg::Vec3f(0, 0, -4), 3.F, down, distance), isOver);
            if (!isOver)
                continue;
            query.findClosestPoint(above, closest);
            EXPECT_EQ(down.triangle, closest.triangle) << x << ' ' << y;
            EXPECT_EQ(distance, 2.F);
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
