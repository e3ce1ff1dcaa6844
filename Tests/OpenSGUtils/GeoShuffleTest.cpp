#include "OpenSGUtils/kyGeoShuffle.h"

#include "OpenSG/TinyGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>

using osg::Vec2f;
using tiny::Ids;

namespace
{

constexpr unsigned int noVertex = 0xFFFFFFFF;

/// Four vertices that can be told apart in a property of every role.
osg::RefPtr<osg::Geometry> richQuad()
{
    osg::RefPtr<osg::Geometry> geometry = tiny::quad();
    const auto normals = osg::GeoNormals3f::create();
    const auto colors = osg::GeoColors3f::create();
    const auto secondary = osg::GeoColors4f::create();
    const auto wide = osg::GeoTexCoords3f::create();
    for (unsigned int i = 0; i < 4; ++i) {
        const auto x = static_cast<float>(i + 1);
        normals->addValue(osg::Vec3f(x, 0, 0));
        colors->addValue(osg::Color4f(x, 0, 0, 1));
        secondary->addValue(osg::Color4f(0, x, 0, 1));
        wide->addValue(Vec2f(x, 3));
    }
    geometry->setNormals(normals);
    geometry->setColors(colors);
    geometry->setSecondaryColors(secondary);
    geometry->setTexSlot(0, tiny::texCoords({Vec2f(1, 0), Vec2f(2, 0), Vec2f(3, 0), Vec2f(4, 0)}));
    geometry->setTexSlot(5, wide);
    return geometry;
}

/// The old numbers of the vertices as one property tells them; 0 reads as no vertex.
template <class Property, class Number>
Ids numbersIn(const Property& property, Number number)
{
    Ids ids;
    for (const auto& value : property->getValues())
        ids.push_back(static_cast<unsigned int>(number(value)) - 1);
    return ids;
}

/// The old numbers of the vertices, which all properties but the positions agree on.
Ids vertexNumbers(const osg::Geometry& geometry)
{
    const auto x = [](const auto& value) { return value[0]; };
    Ids ids = numbersIn(geometry.getNormals(), x);
    EXPECT_EQ(numbersIn(geometry.getColors(), x), ids);
    EXPECT_EQ(numbersIn(geometry.getSecondaryColors(), [](const auto& c) { return c[1]; }), ids);
    EXPECT_EQ(numbersIn(geometry.getTexSlot(0), x), ids);
    EXPECT_EQ(numbersIn(geometry.getTexSlot(5), x), ids);
    EXPECT_EQ(geometry.getPositions()->getSize(), ids.size());
    return ids;
}

void rearrange(const osg::GeometryPtr& geometry, const Ids& ids)
{
    kyGeoShuffle::shuffleProperties(geometry, ids.data(), static_cast<unsigned int>(ids.size()),
                                    nullptr, 0, true);
}

void copyTo(const osg::GeometryPtr& geometry, const Ids& ids, const Ids& targets,
            unsigned int newCount)
{
    kyGeoShuffle::shuffleProperties(geometry, ids.data(), static_cast<unsigned int>(ids.size()),
                                    targets.data(), newCount, false);
}

TEST(GeoShuffle, RearrangesGrowsAndShrinksEveryProperty)
{
    for (const Ids& ids : {Ids{3, 2, 1, 0}, Ids{1}, Ids{0, 0, 3, 1, 1, 2, 0}, Ids{0, 9}, Ids{}}) {
        const auto geometry = richQuad();
        rearrange(geometry, ids);
        Ids expected = ids;
        std::replace(expected.begin(), expected.end(), 9U, noVertex); // beyond the end: zero
        EXPECT_EQ(vertexNumbers(*geometry), expected);
        EXPECT_EQ(geometry->getIndices()->getValues(), (Ids{0, 1, 2, 0, 2, 3}));
        EXPECT_EQ(geometry->getTexSlot(1), osg::NullFC);
    }
}

TEST(GeoShuffle, CopiesVerticesToNewOnes)
{
    const auto geometry = richQuad();
    copyTo(geometry, {2, 0}, {5, 4}, 6);
    EXPECT_EQ(vertexNumbers(*geometry), (Ids{0, 1, 2, 3, 0, 2}));
    copyTo(geometry, {}, {}, 6);
    EXPECT_EQ(vertexNumbers(*geometry), (Ids{0, 1, 2, 3, 0, 2})) << "nothing to copy";
    copyTo(geometry, {1, 0}, {0, 1}, 6);
    EXPECT_EQ(vertexNumbers(*geometry), (Ids{1, 0, 2, 3, 0, 2})) << "reads before it writes";
}

TEST(GeoShuffle, LeavesEmptyAndSharedPropertiesAlone)
{
    const auto geometry = richQuad();
    geometry->setTexSlot(2, osg::GeoTexCoords2f::create());
    const osg::RefPtr<osg::GeoTexCoords> shared(geometry->getTexSlot(0));
    geometry->setTexSlot(3, shared);
    rearrange(geometry, {3, 0});
    EXPECT_EQ(geometry->getTexSlot(2)->getSize(), 0U);
    EXPECT_EQ(shared->getSize(), 4U) << "held by others too";
    for (const unsigned int slot : {0U, 3U})
        EXPECT_EQ(geometry->getTexSlot(slot)->getValues(),
                  (std::vector<Vec2f>{Vec2f(4, 0), Vec2f(1, 0)}));
}

TEST(GeoShuffle, TellsEachPropertyThenTheGeometryWithoutItsIndices)
{
    const auto geometry = tiny::quad();
    geometry->setTexSlot(4, tiny::texCoords(std::vector<Vec2f>(4)));
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    journal.watch(geometry->getPositions());
    journal.watch(geometry->getTexSlot(4));
    rearrange(geometry, {0, 1});

    const auto mask = osg::Geometry::PositionsFieldMask | osg::Geometry::TexCoords4FieldMask;
    EXPECT_EQ(journal.notices, (std::vector<tiny::NoticeJournal::Notice>{
                                   {geometry->getPositions()->getId(), osg::FieldMask::all(), 1},
                                   {geometry->getTexSlot(4)->getId(), osg::FieldMask::all(), 1},
                                   {geometry->getId(), mask, 1}}));
    kyGeoShuffle::shuffleProperties(osg::NullFC, nullptr, 0, nullptr, 0, true);
}

} // namespace
