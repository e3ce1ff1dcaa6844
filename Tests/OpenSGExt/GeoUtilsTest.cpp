#include "OpenSGExt/kyGeoUtils.h"

#include "OpenSG/Group.h"
#include "OpenSG/TinyGeometry.h"

#include <gtest/gtest.h>

#include <functional>

using namespace kyGeoUtils;

namespace
{

/// One triangle of three vertices, with one types and one lengths entry.
osg::GeometryPtr triangle()
{
    const auto geometry = osg::Geometry::create();
    geometry->setPositions(tiny::positions(std::vector<osg::Pnt3f>(3)));
    geometry->setIndices(tiny::indices({0, 1, 2}));
    const auto types = osg::GeoPTypesUI8::create();
    types->addValue(4);
    const auto lengths = osg::GeoPLengthsUI32::create();
    lengths->addValue(3);
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    return geometry;
}

TEST(GeoUtils, EachFaultHasItsBit)
{
    struct Case
    {
        const char* name;
        std::function<void(osg::Geometry&)> change;
        unsigned int errors;
    };
    const Case cases[] = {
        {"sound", [](auto&) {}, 0},
        {"no triangles yet",
         [](auto& g) {
             g.getIndices()->clear();
             g.setTypes(osg::NullFC);
             g.setLengths(osg::NullFC);
         },
         0},
        {"no positions", [](auto& g) { g.setPositions(osg::NullFC); }, NoPositions},
        {"homogeneous positions", [](auto& g) { g.setPositions(osg::GeoPositions4f::create()); },
         NoPositions},
        {"no indices", [](auto& g) { g.setIndices(osg::NullFC); }, NoIndices},
        {"a corner too many",
         [](auto& g) {
             g.getIndices()->addValue(0);
             g.setLengths(osg::NullFC);
             g.setTypes(osg::NullFC);
         },
         NotTriangles},
        {"a strip", [](auto& g) { g.getTypes()->setValue(5, 0); }, NotTriangles},
        {"an index beyond the end", [](auto& g) { g.getIndices()->setValue(3, 1); },
         IndexOutOfRange},
        {"the highest index that there is",
         [](auto& g) { g.getIndices()->setValue(0xFFFFFFFF, 2); }, IndexOutOfRange},
        {"indices without a vertex", [](auto& g) { g.getPositions()->clear(); }, IndexOutOfRange},
        {"two index lists",
         [](auto& g) {
             g.setIndexMapping({osg::Geometry::MapPosition, osg::Geometry::MapTexCoords});
         },
         MultipleIndices},
        {"lengths that promise more", [](auto& g) { g.getLengths()->setValue(6, 0); },
         InconsistentLengths},
        {"lengths that cut a triangle",
         [](auto& g) {
             g.getLengths()->setValue(2, 0);
             g.getLengths()->addValue(1);
             g.getTypes()->addValue(4);
         },
         InconsistentLengths},
        {"more lengths than types", [](auto& g) { g.getLengths()->addValue(0); },
         InconsistentLengths},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const osg::RefPtr<osg::Geometry> geometry(triangle());
        c.change(*geometry);
        EXPECT_EQ(checkGeometryCore(geometry, true), c.errors);
        EXPECT_EQ(checkGeometryCore(geometry, false), c.errors & ~IndexOutOfRange)
            << "the look at each index is optional";
    }
    const osg::RefPtr<osg::Group> group(osg::Group::create());
    EXPECT_EQ(checkGeometryCore(group, true), NoPositions | NoIndices);
    EXPECT_EQ(checkGeometryCore(osg::NullFC, true), NoPositions | NoIndices);
}

TEST(GeoUtils, EachBitHasItsWords)
{
    EXPECT_EQ(getGeometryErrorString(0), "");
    EXPECT_EQ(getGeometryErrorString(NoPositions | NoIndices | NotTriangles | IndexOutOfRange |
                                     MultipleIndices | InconsistentLengths),
              "no vertex positions, no indices, not a triangle mesh, index out of range, "
              "multiple index lists, inconsistent primitive lengths");
}

} // namespace
