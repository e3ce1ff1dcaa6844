#include "OpenSG/ChangeNotice.h"
#include "OpenSG/SurfaceBase.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

using namespace osg;

namespace
{

TEST(Geometry, NamedPropertiesSlotsAndVertexPropertiesAreTheSame)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    for (unsigned slot = 0; slot < 8; ++slot)
        geometry->setTexSlot(slot, GeoTexCoords2f::create());
    geometry->setTexSlot(8, geometry->getTexSlot(0));
    EXPECT_EQ(geometry->getTexSlot(8), NullFC);
    EXPECT_EQ(geometry->getTexCoords5(), geometry->getTexSlot(5));
    EXPECT_EQ(geometry->getVertexProperty(0), geometry->getPositions());
    EXPECT_EQ(geometry->getVertexProperty(11), geometry->getTexCoords7());
    EXPECT_EQ(geometry->getVertexProperty(12), NullFC);
    EXPECT_EQ(GeometryBase::vertexPropertyFieldMask(11), GeometryBase::TexCoords7FieldMask);
    EXPECT_EQ(GeometryBase::texSlotFieldMask(2), GeometryBase::TexCoords2FieldMask);
    geometry->setTexCoords7(NullFC);
    EXPECT_EQ(geometry->getTexSlot(7), NullFC);

    const RefPtr<GeoNormals3f> normals(GeoNormals3f::create());
    geometry->setVertexProperty(0, normals.get());
    EXPECT_NE(geometry->getVertexProperty(0), NullFC) << "another role is refused";
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

TEST(MakeSingleIndexed, MakesOneVertexForEachTupleInOrderOfFirstUse)
{
    const RefPtr<Geometry> geometry = tiny::multiIndexedQuad();
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
}

TEST(MakeSingleIndexed, TellsEveryPropertyAndThenTheGeometryOnce)
{
    const RefPtr<Geometry> geometry = tiny::multiIndexedQuad();
    tiny::NoticeJournal journal;
    journal.watch(geometry->getPositions());
    journal.watch(geometry->getTexSlot(0));
    journal.watch(geometry->getTexSlot(3));
    journal.watch(geometry->getIndices());
    journal.watch(geometry.get());
    geometry->makeSingleIndexed();
    ASSERT_EQ(journal.notices.size(), 5U);
    EXPECT_EQ(journal.notices[0].id, geometry->getPositions()->getId());
    EXPECT_EQ(journal.notices[3].id, geometry->getIndices()->getId());
    EXPECT_EQ(journal.notices[4].id, geometry->getId());
    EXPECT_EQ(journal.notices[4].mask,
              GeometryBase::PositionsFieldMask | GeometryBase::TexCoordsFieldMask |
                  GeometryBase::TexCoords3FieldMask | GeometryBase::IndicesFieldMask |
                  GeometryBase::IndexMappingFieldMask);
}

TEST(MakeSingleIndexed, LeavesAPropertyThatAnotherGeometryHoldsAsItWas)
{
    const RefPtr<Geometry> geometry = tiny::multiIndexedQuad();
    const RefPtr<Geometry> twin(geometry->clone());
    geometry->makeSingleIndexed();
    EXPECT_EQ(twin->getPositions()->getSize(), 4U);
    EXPECT_EQ(twin->getIndices()->getSize(), 12U);
    EXPECT_EQ(twin->getIndexMapping().size(), 2U);
    EXPECT_EQ(geometry->getPositions()->getSize(), 5U);
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

} // namespace
