#include "TriangleSoups.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

using Points = std::vector<osg::Pnt3f>;

/// Corners, middles of edges and points nearby and far off of some of the triangles.
Points pointsAbout(std::mt19937& random, const Points& positions, float size)
{
    Points points;
    for (unsigned int i = 0; i < 24; ++i) {
        const osg::Pnt3f a = positions[random() % positions.size()];
        const osg::Pnt3f b = positions[random() % positions.size()];
        points.push_back(a);
        points.emplace_back((a.subZero() + b.subZero()) * 0.5F);
        points.push_back(a + randomPoint(random, 0.1F * size).subZero());
        points.push_back(randomPoint(random, std::min((i % 4 == 0 ? 1e4F : 2.F) * size, 1e38F)));
    }
    points.push_back(randomPoint(random, 1e30F));
    std::erase_if(points, [](const osg::Pnt3f& point) {
        return !std::isfinite(point.x()) || !std::isfinite(point.y());
    });
    return points;
}

tiny::Ids randomIds(std::mt19937& random, std::size_t triangles, std::size_t vertices)
{
    tiny::Ids ids(3 * triangles);
    for (unsigned int& id : ids)
        id = static_cast<unsigned int>(random() % vertices);
    return ids;
}

} // namespace

osg::Pnt3f randomPoint(std::mt19937& random, float size)
{
    std::uniform_real_distribution<float> component(-size, size);
    const float x = component(random);
    const float y = component(random);
    return osg::Pnt3f(x, y, component(random));
}

osg::RefPtr<osg::Geometry> soupOf(const Points& positions, const tiny::Ids& ids)
{
    osg::RefPtr<osg::Geometry> geometry(osg::Geometry::create());
    geometry->setPositions(tiny::positions(positions));
    geometry->setIndices(tiny::indices(ids));
    return geometry;
}

osg::RefPtr<osg::Geometry> flatGrid(unsigned int n)
{
    Points positions;
    tiny::Ids ids;
    for (unsigned int y = 0; y <= n; ++y)
        for (unsigned int x = 0; x <= n; ++x) {
            positions.emplace_back(x, y, 0);
            const unsigned int a = y * (n + 1) + x;
            if (x < n && y < n)
                ids.insert(ids.end(), {a, a + 1, a + n + 2, a, a + n + 2, a + n + 1});
        }
    return soupOf(positions, ids);
}

std::vector<Soup> hardSoups()
{
    std::mt19937 random(11);
    std::vector<Soup> soups;
    const auto cloud = [&](std::size_t count, float size, const osg::Vec3f& center) {
        Points points;
        while (points.size() < count)
            points.push_back(randomPoint(random, size) + center);
        return points;
    };
    const auto add = [&](const std::string& name, const Points& positions, float size,
                         const tiny::Ids& ids) {
        soups.push_back({name, soupOf(positions, ids), pointsAbout(random, positions, size)});
    };
    for (const float size : {1.F, 1e-20F, 1e20F, 3e-44F, 1e38F})
        add("size " + std::to_string(std::log10(size)), cloud(120, size, osg::Vec3f()), size,
            randomIds(random, 200, 120));
    add("far off", cloud(200, 1.F, osg::Vec3f(1e6F, -3e5F, 7.F)), 1e6F,
        randomIds(random, 300, 200));
    const auto grid = flatGrid(40);
    add("grid", grid->getPositions()->getValues(), 1.F, grid->getIndices()->getValues());
    add("few places", cloud(5, 1.F, osg::Vec3f()), 1.F, randomIds(random, 200, 5));
    Points line;
    for (int i = 0; i < 40; ++i)
        line.emplace_back(0.1F * static_cast<float>(i), 0.3F * static_cast<float>(i),
                          i % 5 == 0 ? 1e-7F : 0.F);
    add("slivers", line, 4.F, randomIds(random, 200, 40));
    for (osg::Pnt3f& point : line)
        point += osg::Vec3f(700.F, -300.F, 5.F);
    add("slivers far off", line, 4.F, randomIds(random, 200, 40));
    Points broken = cloud(60, 1.F, osg::Vec3f());
    broken[3] = osg::Pnt3f(std::numeric_limits<float>::quiet_NaN(), 0, 0);
    broken[4] = osg::Pnt3f(0, -std::numeric_limits<float>::infinity(), 0);
    add("broken", broken, 1.F, randomIds(random, 200, 64));
    add("one triangle", cloud(3, 1.F, osg::Vec3f()), 1.F, {0, 1, 2});
    return soups;
}
