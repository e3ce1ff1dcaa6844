#include "UVUtils/repair/SeamWalker.h"

#include "UVUtils/Meshes.h"

#include <gtest/gtest.h>

namespace
{

/// Rows of unit squares, the vertex (x, y) at position (x, y, 0); open along y = 1 up to `slit`,
/// where the squares above have vertices of their own.
osg::RefPtr<osg::Geometry> slitGrid(unsigned columns, unsigned slit)
{
    std::vector<osg::Pnt3f> positions;
    for (const unsigned y : {0U, 1U, 2U, 1U})
        for (unsigned x = 0; x <= columns; ++x)
            positions.emplace_back(x, y, 0);
    Ids indices;
    const auto id = [&](unsigned x, unsigned row) { return row * (columns + 1) + x; };
    for (unsigned x = 0; x < columns; ++x) {
        const auto above = [&](unsigned at) { return id(at, at < slit ? 3 : 1); };
        for (const unsigned corner :
             {id(x, 0), id(x + 1, 0), id(x + 1, 1), id(x, 0), id(x + 1, 1), id(x, 1), above(x),
              above(x + 1), id(x + 1, 2), above(x), id(x + 1, 2), id(x, 2)})
            indices.push_back(corner);
    }
    return osg::RefPtr<osg::Geometry>(geometryOf(positions, indices));
}

osg::Pnt3f at(float x, float y)
{
    return osg::Pnt3f(x, y, 0);
}

struct Way
{
    const char* name;
    osg::Pnt3f start;
    int startTriangle; ///< four a column: the lower two, then the upper two
    osg::Pnt3f end;
    int endTriangle;
    bool isThere;
    osg::Pnt3f out; ///< the point closest to the end, where there is no way
};

TEST(SeamWalker, GoesAroundTheEndOfASeamButNotFar)
{
    const auto grid = slitGrid(6, 3);
    const SeamWalker walker(grid.get());
    for (const Way& way :
         {Way{"along", at(0.9F, 0.3F), 0, at(4.9F, 0.3F), 16, true, {}},
          Way{"to where the seam has ended", at(1.9F, 0.3F), 4, at(5.2F, 1.8F), 23, true, {}},
          Way{"around", at(2.5F, 0.1F), 8, at(3.1F, 1.8F), 15, true, {}},
          Way{"around, a quarter longer", at(2.8F, 0.3F), 8, at(0.9F, 1.3F), 2, true, {}},
          Way{"around twice", at(0.6F, 0.3F), 0, at(0.4F, 1.9F), 3, false, at(0.684211F, 1)},
          Way{"around backward", at(0.5F, 1.1F), 2, at(2.4F, 0.7F), 9, false, at(0.975F, 1)},
          Way{"too far", at(2.4F, 0.5F), 9, at(2.4F, 1.5F), 11, false, at(2.4F, 1)},
          Way{"much too far", at(0.4F, 0.9F), 1, at(0.4F, 1.3F), 3, false, at(0.4F, 1)},
          Way{"beyond all floats", at(0, 0.9F), 1, at(1e20F, 1.3F), 3, true, {}},
          Way{"to the seam", at(1.3F, 0.9F), 5, at(1.3F, 1), 7, false, at(1.3F, 1)},
          Way{"no such triangle", at(0, 0), 0, at(1, 1), 24, false, {}}})
    {
        SCOPED_TRACE(way.name);
        kyPointOnGeometry out;
        ASSERT_EQ(
            walker.findPath(way.start, way.startTriangle, way.end, way.endTriangle, nullptr, &out),
            way.isThere);
        EXPECT_TRUE(way.isThere || (out.getPosition() - way.out).length() <= 1e-5F);
        if (out.geometry) {
            EXPECT_EQ(out.triangle % 4 < 2, way.startTriangle % 4 < 2); // the near side of the seam
            const osg::Plane across(osg::Vec3f(1, 0, 0), way.start);
            EXPECT_FALSE(walker.findPath(way.start, way.startTriangle, way.end, way.endTriangle,
                                         &across, nullptr));
        }
    }
}

TEST(SeamWalker, WalksAsFarAsAMeshGoes)
{
    const unsigned columns = 50000;
    const auto grid = slitGrid(columns, columns + 1);
    const SeamWalker walker(grid.get());
    const osg::Pnt3f start(0.9F, 0.5F, 0);
    const osg::Pnt3f end(static_cast<float>(columns) - 0.1F, 0.5F, 0);
    const osg::Plane plane(osg::Vec3f(0, 1, 0), start);
    EXPECT_TRUE(walker.findPath(start, 0, end, 4 * columns - 4, &plane, nullptr));
    EXPECT_TRUE(walker.findPath(end, 4 * columns - 4, start, 0, &plane, nullptr));
    EXPECT_FALSE(walker.findPath(start, 0, end, 4 * columns - 1, &plane, nullptr));
}

} // namespace
