#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/SurfaceBase.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

using namespace osg;

namespace
{

TEST(GeoProperty, AnyKindOfTexCoordsReadsAsTwoFloats)
{
    const RefPtr<GeoTexCoords1f> one(GeoTexCoords1f::create());
    const RefPtr<GeoTexCoords4f> four(GeoTexCoords4f::create());
    for (const GeoTexCoordsPtr& texCoords : {GeoTexCoordsPtr(one), GeoTexCoordsPtr(four)})
        texCoords->addValue(Vec2f(3, 4));
    EXPECT_EQ(GeoTexCoordsPtr(one)->getValue(0), Vec2f(3, 0));
    EXPECT_EQ(GeoTexCoordsPtr(four)->getValue(0), Vec2f(3, 4));

    four->values()[0] = Vec4f(1, 2, 3, 4);
    four->setValue(Vec2f(8, 9), 0);
    EXPECT_EQ(four->values()[0], Vec4f(8, 9, 3, 4)) << "what has no place in the value stays";
}

TEST(GeoProperty, ColorsWithoutOpacityReadAsOpaque)
{
    const RefPtr<GeoColors3f> colors(GeoColors3f::create());
    colors->addValue(Color4f(0.25F, 0.5F, 0.75F, 0.1F));
    EXPECT_EQ(colors->getValue(0), Color4f(0.25F, 0.5F, 0.75F, 1));
    EXPECT_EQ(colors->values()[0], Color3f(0.25F, 0.5F, 0.75F));
}

TEST(GeoProperty, SaturatesBeyondItsKindAndReadsZeroBeyondItsEnd)
{
    const RefPtr<GeoIndicesUI16> indices(GeoIndicesUI16::create());
    indices->setValues(std::vector{70000U, 65535U, 3U});
    indices->setValue(9, 3);
    EXPECT_EQ(indices->getValues(), (std::vector{65535U, 65535U, 3U}));
    EXPECT_EQ(indices->getValue(3), 0U);
}

TEST(GeoProperty, GatherTakesRepeatsAndZerosForSourcesBeyondTheEnd)
{
    const RefPtr<GeoTexCoords3f> texCoords(GeoTexCoords3f::create());
    texCoords->takeValues({Vec3f(1, 1, 1), Vec3f(2, 2, 2)});
    const unsigned sources[] = {1, 0, 1, 7};
    GeoPropertyPtr(texCoords)->gather(sources);
    EXPECT_EQ(std::vector(texCoords->values().begin(), texCoords->values().end()),
              (std::vector{Vec3f(2, 2, 2), Vec3f(1, 1, 1), Vec3f(2, 2, 2), Vec3f()}));
}

TEST(Geometry, NamedPropertiesSlotsAndVertexPropertiesAreTheSame)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    for (unsigned slot = 0; slot < 8; ++slot) {
        geometry->setTexSlot(slot, GeoTexCoords2f::create());
        EXPECT_EQ(geometry->getVertexProperty(4 + slot), geometry->getTexSlot(slot));
    }
    EXPECT_EQ(geometry->getTexCoords5(), geometry->getTexSlot(5));
    geometry->setTexSlot(8, geometry->getTexSlot(0));
    EXPECT_EQ(geometry->getTexSlot(8), NullFC);
    EXPECT_EQ(geometry->getVertexProperty(12), NullFC);
    EXPECT_EQ(GeometryBase::vertexPropertyFieldMask(11), GeometryBase::TexCoords7FieldMask);
    EXPECT_EQ(GeometryBase::texSlotFieldMask(2), GeometryBase::TexCoords2FieldMask);

    const RefPtr<GeoNormals3f> normals(GeoNormals3f::create());
    geometry->setVertexProperty(0, normals.get());
    EXPECT_EQ(geometry->getVertexProperty(0), geometry->getPositions()) << "another role";
    EXPECT_NE(geometry->getPositions(), NullFC);
    geometry->setVertexProperty(1, normals.get());
    EXPECT_EQ(geometry->getNormals(), normals.get());
    geometry->setVertexProperty(1, NullFC);
    EXPECT_EQ(geometry->getNormals(), NullFC);
}

TEST(MakeSingleIndexed, IsSilentAndInertOnASingleIndexedGeometry)
{
    for (const std::vector<std::uint16_t>& mapping :
         {std::vector<std::uint16_t>{}, {Geometry::MapPosition}})
    {
        const RefPtr<Geometry> geometry = tiny::quad();
        geometry->setIndexMapping(mapping);
        const GeoIndicesPtr indices = geometry->getIndices();
        tiny::NoticeJournal journal;
        journal.watch(geometry.get());
        journal.watch(indices);
        geometry->makeSingleIndexed();
        EXPECT_TRUE(journal.notices.empty());
        EXPECT_EQ(geometry->getIndices(), indices);
        EXPECT_EQ(indices->getValues(), (tiny::Ids{0, 1, 2, 0, 2, 3}));
        EXPECT_EQ(geometry->getIndexMapping(), mapping);
    }
}

TEST(MakeSingleIndexed, MakesOneVertexForEachTupleInOrderOfFirstUseAndTellsIt)
{
    const RefPtr<Geometry> geometry = tiny::multiIndexedQuad();
    const RefPtr<Geometry> twin(geometry->clone());
    tiny::NoticeJournal journal;
    journal.watch(geometry.get());
    geometry->makeSingleIndexed();
    EXPECT_EQ(geometry->getIndices()->getValues(), (tiny::Ids{0, 1, 2, 0, 3, 4}));
    EXPECT_EQ(geometry->getPositions()->getValues(),
              (std::vector{Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(1, 1, 0), Pnt3f(1, 1, 0),
                           Pnt3f(0, 1, 0)}));
    EXPECT_EQ(geometry->getTexCoords()->getValue(3), Vec2f(5, 5));
    EXPECT_EQ(geometry->getTexCoords3()->getValue(4), Vec2f(4, 9));
    EXPECT_EQ(geometry->getIndexMapping(),
              (std::vector<std::uint16_t>{Geometry::MapPosition | Geometry::MapTexCoords |
                                          Geometry::MapTexCoords3}));
    const FieldMask changed = GeometryBase::PositionsFieldMask | GeometryBase::TexCoordsFieldMask |
                              GeometryBase::TexCoords3FieldMask | GeometryBase::IndicesFieldMask |
                              GeometryBase::IndexMappingFieldMask;
    EXPECT_EQ(journal.notices,
              (std::vector<tiny::NoticeJournal::Notice>{{geometry->getId(), changed, 1}}));

    // What another geometry holds stays as it was; what is held once is rewritten and tells it.
    EXPECT_EQ(twin->getPositions()->getSize(), 4U);
    EXPECT_EQ(twin->getIndices()->getSize(), 12U);
    EXPECT_EQ(twin->getIndexMapping().size(), 2U);
    tiny::NoticeJournal order;
    order.watch(twin->getPositions());
    order.watch(twin->getTexSlot(0));
    order.watch(twin->getTexSlot(3));
    order.watch(twin->getIndices());
    order.watch(twin.get());
    const unsigned expected[] = {twin->getPositions()->getId(), twin->getTexSlot(0)->getId(),
                                 twin->getTexSlot(3)->getId(), twin->getIndices()->getId(),
                                 twin->getId()};
    twin->makeSingleIndexed();
    ASSERT_EQ(order.notices.size(), std::size(expected));
    for (std::size_t i = 0; i < order.notices.size(); ++i)
        EXPECT_EQ(order.notices[i].id, expected[i]);
}

TEST(MakeSingleIndexed, SurvivesStrayNumbersAndAnUnfinishedCorner)
{
    const RefPtr<Geometry> geometry = tiny::multiIndexedQuad();
    geometry->setIndices(tiny::indices({0, 0, 1, 99, 0xFFFFFFFF, 2, 3}));
    geometry->setNormals(GeoNormals3f::create()); // mapped by no entry
    geometry->makeSingleIndexed();
    EXPECT_EQ(geometry->getIndices()->getValues(), (tiny::Ids{0, 1, 2}));
    EXPECT_EQ(geometry->getTexCoords()->getValue(1), Vec2f());
    EXPECT_EQ(geometry->getPositions()->getValue(2), Pnt3f());
    EXPECT_EQ(geometry->getNormals()->getSize(), 0U);

    geometry->setIndexMapping({Geometry::MapPosition, Geometry::MapNormal});
    geometry->setIndices(NullFC);
    geometry->makeSingleIndexed();
    EXPECT_EQ(geometry->getIndexMapping().size(), 2U) << "nothing to rewrite";
}

TEST(MakeSingleIndexed, ChangesToWideIndicesWhenVerticesOutgrowNarrowOnes)
{
    // 300 x 300 combinations of two short lists.
    const RefPtr<Geometry> geometry(Geometry::create());
    const auto positions = GeoPositions3f::create();
    positions->resize(300);
    geometry->setPositions(positions);
    const auto texCoords = GeoTexCoords2f::create();
    texCoords->resize(300);
    geometry->setTexCoords(texCoords);
    const auto indices = GeoIndicesUI16::create();
    for (unsigned i = 0; i < 300; ++i)
        for (unsigned j = 0; j < 300; ++j) {
            indices->addValue(i);
            indices->addValue(j);
        }
    geometry->setIndices(indices);
    geometry->setIndexMapping({Geometry::MapPosition, Geometry::MapTexCoords});
    geometry->makeSingleIndexed();
    EXPECT_NE(dcast<GeoIndicesUI32>(geometry->getIndices()), NullFC);
    EXPECT_EQ(geometry->getIndices()->getValue(89999), 89999U);
    EXPECT_EQ(geometry->getPositions()->getSize(), 90000U);
}

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
