#include "OpenSGUtils/kyGeoIndicesStore.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/TinyGeometry.h"

#include <gtest/gtest.h>

#include <numeric>

using tiny::Ids;

namespace
{

constexpr unsigned int selectedEdges = 6;

Ids listOf(const osg::GeometryPtr& geometry, unsigned int number)
{
    const auto values = osg::GeoTmpIndexEditInterface(geometry, number).values();
    return {values.begin(), values.end()};
}

/// What one list of the quad, and constraints of the same edges, become when its vertices are
/// mapped and its triangles are others.
template <class Map>
Ids restored(unsigned int list, unsigned int type, const Ids& ids, const Ids& triangles,
             const Map& map)
{
    const auto geometry = tiny::quad();
    osg::GeoTmpIndexEditInterface view(geometry, list);
    view.assign(ids);
    view.setType(type);
    setUVConstraints(geometry, {{ids, {}}});
    kyGeoIndicesStore store(geometry, kyGeoIndicesStore::ListsAndConstraints);
    osg::GeoTmpIndexEditInterface::setNullforAll(geometry); // as a mesh does that watches
    view.setType(osg::GeoPrimitive::Points);
    geometry->setIndices(tiny::indices(triangles));
    map(store);
    store.restore();
    EXPECT_EQ(view.getType(), type);
    if (type == osg::GeoPrimitive::Lines) {
        EXPECT_EQ(store.getUVConstraints().front().edgesU, listOf(geometry, list));
    }
    return listOf(geometry, list);
}

struct Case
{
    const char* name;
    unsigned int list;
    unsigned int type;
    Ids ids;
    Ids expected;
};

/// The triangles (0, 1, 2) and (0, 2, 3) of a quad come apart along their edge (0, 2): the second
/// one is (4, 5, 3).
TEST(GeoIndicesStore, FollowsVerticesThatBecomeSeveral)
{
    using osg::GeoPrimitive;
    const Case cases[] = {
        {"points", 2, GeoPrimitive::Points, {2, 3, 2}, {2, 5, 3, 2, 5}},
        {"the split edge", 11, GeoPrimitive::Lines, {2, 0}, {2, 0, 5, 4}},
        {"edges of one side", selectedEdges, GeoPrimitive::Points, {3, 2, 0, 1}, {3, 5, 0, 1}},
        {"a pair that is no edge", 8, GeoPrimitive::Lines, {1, 3, 0, 0}, {1, 3, 0, 0}},
        {"an id left over", 9, GeoPrimitive::Lines, {0, 3, 2}, {4, 3, 2}},
        {"triangles", 1, GeoPrimitive::Points, {2, 3, 0, 1, 2, 0}, {5, 3, 4, 1, 2, 0}},
        {"no triangle", 12, GeoPrimitive::Triangles, {1, 2, 3}, {1, 2, 3}},
        {"stale ids", 10, GeoPrimitive::Lines, {0, 4, 1, 2, 9}, {1, 2}},
        {"empty", 4, GeoPrimitive::Points, {}, {}},
    };
    const Ids triangles{0, 1, 2, 4, 5, 3};
    const Ids sources{0, 2};
    const Ids copies{4, 5};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(restored(c.list, c.type, c.ids, triangles,
                           [&](kyGeoIndicesStore& store) {
                               store.mapCopies(sources, copies, 4, triangles);
                           }),
                  c.expected);
        EXPECT_EQ(restored(c.list, c.type, c.ids, triangles,
                           [](kyGeoIndicesStore& store) {
                               store.map(std::vector<Ids>{{0, 4}, {1}, {2, 5}, {3}});
                           }),
                  c.expected);
    }
}

/// Vertices 1 and 3 become one, so the triangles fold onto each other.
TEST(GeoIndicesStore, FollowsVerticesThatBecomeOne)
{
    using osg::GeoPrimitive;
    const Case cases[] = {
        {"points", 2, GeoPrimitive::Points, {3, 0, 1, 3}, {1, 0, 1}},
        {"edges that meet", 8, GeoPrimitive::Lines, {0, 1, 3, 0, 1, 0, 1, 2}, {0, 1, 1, 0, 1, 2}},
        {"an edge that collapses", selectedEdges, GeoPrimitive::Points, {1, 3, 2, 0, 3}, {2, 0, 1}},
        {"triangles that meet", 1, GeoPrimitive::Triangles, {0, 2, 3, 0, 1, 2}, {0, 2, 1}},
        {"stale ids", 9, GeoPrimitive::Lines, {0, 4, 2, 3}, {2, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(restored(c.list, c.type, c.ids, {0, 1, 2, 0, 2, 1},
                           [](kyGeoIndicesStore& store) {
                               store.map(Ids{0, 1, 2, 1});
                           }),
                  c.expected);
    }
}

TEST(GeoIndicesStore, GivesBackWhatThereWasAndNoMore)
{
    const auto geometry = tiny::quad();
    const kyGeoIndicesStore nothing(geometry, kyGeoIndicesStore::ListsAndConstraints);
    EXPECT_TRUE(nothing.isEmpty());
    osg::GeoTmpIndexEditInterface full(geometry, 2);
    osg::GeoTmpIndexEditInterface empty(geometry, 3);
    osg::GeoTmpIndexEditInterface null(geometry, 4);
    full.assign(Ids{3, 77});
    empty.make();
    null.setNull();
    setUVConstraints(geometry, {{{0, 1}, {}}});

    const kyGeoIndicesStore lists(geometry, kyGeoIndicesStore::TempIndexLists);
    const kyGeoIndicesStore constraints(geometry, kyGeoIndicesStore::UVConstraints);
    EXPECT_FALSE(lists.isEmpty() || constraints.isEmpty());
    osg::GeoTmpIndexEditInterface::setNullforAll(geometry);
    setUVConstraints(geometry, {UVConstraintData()});
    EXPECT_EQ(constraints.getUVConstraints().front(), UVConstraintData()) << "as they are now";
    lists.restore();
    EXPECT_EQ(listOf(geometry, 2), (Ids{3, 77}));
    EXPECT_FALSE(empty.isNull());
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(getUVConstraints(geometry).front(), UVConstraintData());
    constraints.restore();
    EXPECT_EQ(getUVConstraints(geometry).front().edgesU, (Ids{0, 1}));

    const kyGeoIndicesStore ofNull(osg::NullFC, kyGeoIndicesStore::ListsAndConstraints);
    EXPECT_TRUE(ofNull.isEmpty());
    ofNull.restore();
}

} // namespace
