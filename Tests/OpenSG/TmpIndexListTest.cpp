#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

#include <set>

using namespace osg;

namespace
{

tiny::Ids idsOf(const GeoTmpIndexEditInterface& list)
{
    return {list.values().begin(), list.values().end()};
}

TEST(TmpIndexList, TwoViewsSeeOneState)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    GeoTmpIndexEditInterface writer(geometry, 6);
    const GeoTmpIndexEditInterface reader(geometry, 6);
    writer.make();
    writer.addValue(1);
    writer.addValue(2);
    writer.resize(4);
    writer.setValue(9, 3);
    writer.setValue(9, 4);
    EXPECT_EQ(idsOf(reader), (tiny::Ids{1, 2, 0, 9}));
    EXPECT_EQ(reader.getData(), writer.getData());
    writer.assign(writer.values().subspan(1)); // its own content
    EXPECT_EQ(idsOf(reader), (tiny::Ids{2, 0, 9}));
    writer.make();
    EXPECT_EQ(reader.getSize(), 0U);
    EXPECT_FALSE(reader.isNull());
    writer.setNull();
    EXPECT_EQ(reader.getData(), nullptr);
}

TEST(TmpIndexList, TheTypeOutlivesTheContentAndCopiesHaveNeither)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    const RefPtr<Geometry> other = tiny::quad();
    GeoTmpIndexEditInterface list(geometry, 1);
    EXPECT_EQ(list.getType(), 0U);
    list.setType(GeoPrimitive::Triangles); // before there is a list
    for (const unsigned number : {1U, 8U, 10U}) {
        GeoTmpIndexEditInterface(geometry, number).make();
        GeoTmpIndexEditInterface(other, number).make();
    }
    const RefPtr<Geometry> copy(geometry->clone());
    EXPECT_TRUE(GeoTmpIndexEditInterface(copy, 1).isNull());
    list.clear();
    EXPECT_FALSE(list.isNull());
    GeoTmpIndexEditInterface::setNullforAll(geometry);
    for (const unsigned number : {1U, 8U, 10U}) {
        EXPECT_TRUE(GeoTmpIndexEditInterface(geometry, number).isNull());
        EXPECT_FALSE(GeoTmpIndexEditInterface(other, number).isNull());
    }
    EXPECT_EQ(list.getType(), 4U);
}

TEST(TmpIndexList, EveryChangeGivesAStampThatNoListHadBefore)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    GeoTmpIndexEditInterface list(geometry, 9);
    GeoTmpIndexEditInterface other(geometry, 10);
    EXPECT_EQ(list.getStamp(), 0U);
    const std::function<void()> changes[] = {
        [&] { list.make(); },    [&] { list.addValue(1); },
        [&] { list.resize(3); }, [&] { list.setValue(1, 2); },
        [&] { list.clear(); },   [&] { list.assign(tiny::Ids{1}); },
        [&] { list.commit(); },  [&] { list.setNull(); },
        [&] { list.make(); },    [&] { GeoTmpIndexEditInterface::setNullforAll(geometry); },
    };
    std::set<unsigned> stamps{0};
    for (const auto& change : changes) {
        change();
        EXPECT_TRUE(stamps.insert(list.getStamp()).second);
        EXPECT_TRUE(stamps.contains(GeoTmpIndexEditInterface(geometry, 9).getStamp()));
        other.make();
        EXPECT_TRUE(stamps.insert(other.getStamp()).second);
    }
    const unsigned last = list.getStamp();
    list.setType(1);
    EXPECT_EQ(list.getStamp(), last) << "reading and typing change nothing";
}

TEST(TmpIndexList, NoListTakesNothingAndNoGeometryHasOne)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    for (const GeometryPtr& owner : {GeometryPtr(geometry), GeometryPtr()}) {
        GeoTmpIndexEditInterface list(owner, 2);
        list.clear();
        list.addValue(1);
        list.resize(3);
        list.setValue(1, 0);
        EXPECT_TRUE(list.isNull());
        EXPECT_EQ(list.getStamp(), 0U);
    }
    GeoTmpIndexEditInterface list(NullFC, 1);
    list.make();
    list.assign(tiny::Ids{1});
    list.setType(4);
    list.commit();
    EXPECT_TRUE(list.isNull());
    EXPECT_EQ(list.getType(), 0U);
    GeoTmpIndexEditInterface::setNullforAll(NullFC);
}

} // namespace
