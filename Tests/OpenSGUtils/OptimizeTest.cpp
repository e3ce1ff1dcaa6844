#include "OpenSGUtils/kyOptimize.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/TriangleIterator.h"
#include "OpenSGUtils/UVConstraintData.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>

using osg::Vec2f;
using tiny::Ids;

namespace
{

using Flags = std::array<bool, 12>;
constexpr Flags compareAll{true, true, true, true,  true, true,
                           true, true, true, false, true, false};

void unify(const osg::GeometryPtr& geometry, const Flags& f = compareAll)
{
    kyOptimize::unifyVertices(geometry, f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7], f[8], f[9],
                              f[10], f[11]);
}

/// All numbers of a vertex, as bits in which -0 is 0.
using Record = std::vector<std::uint32_t>;

Record recordOf(const osg::Geometry& geometry, unsigned vertex)
{
    Record record;
    for (unsigned n = 0; n < osg::Geometry::VertexPropertyCount; ++n) {
        const osg::GeoPropertyPtr property = geometry.getVertexProperty(n);
        if (!property || property->getSize() == 0)
            continue;
        const auto width = property->getStride() / unsigned{sizeof(float)};
        const auto* numbers = static_cast<const float*>(property->getData());
        for (unsigned k = 0; k < width; ++k)
            record.push_back(vertex < property->getSize() && numbers[vertex * width + k] != 0.F
                                 ? std::bit_cast<std::uint32_t>(numbers[vertex * width + k])
                                 : 0);
    }
    return record;
}

std::vector<Record> cornersOf(const osg::Geometry& geometry)
{
    std::vector<Record> corners;
    for (auto t = geometry.beginTriangles(); t != geometry.endTriangles(); ++t)
        for (const unsigned k : {0U, 1U, 2U})
            corners.push_back(recordOf(geometry, t.getPositionIndex(k)));
    return corners;
}

/// Few numbers, so that vertices come out equal.
template <class Property>
void fill(const osg::Ptr<Property>& property, unsigned size)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    property->resize(size);
    for (auto& element : property->values())
        for (unsigned k = 0; k < property->getStride() / sizeof(float); ++k)
            element[k] = *rc::gen::weightedElement<float>(
                {{30, 1.F}, {10, 2.F}, {3, 0.F}, {2, -0.F}, {2, nan}});
}

osg::RefPtr<osg::Geometry> randomGeometry()
{
    osg::RefPtr<osg::Geometry> geometry(osg::Geometry::create());
    const auto vertexCount = *rc::gen::inRange(1U, 12U);
    const auto add = [&](unsigned n, const auto& property) {
        if (n != 0 && *rc::gen::inRange(0, 3) != 0)
            return;
        const bool isRagged = n != 0 && *rc::gen::inRange(0, 4) == 0;
        fill(property, isRagged ? *rc::gen::inRange(0U, 12U) : vertexCount);
        geometry->setVertexProperty(n, property);
    };
    add(0, osg::GeoPositions3f::create());
    add(1, osg::GeoNormals3f::create());
    add(2, osg::GeoColors3f::create());
    add(3, osg::GeoColors4f::create());
    add(4, osg::GeoTexCoords2f::create());
    add(5, osg::GeoTexCoords1f::create());
    add(8, osg::GeoTexCoords3f::create());
    add(11, osg::GeoTexCoords4f::create());
    const auto lengths = *rc::gen::container<Ids>(rc::gen::inRange(0U, 9U));
    geometry->setTypes(osg::GeoPTypesUI8::create());
    geometry->setLengths(osg::GeoPLengthsUI32::create());
    if (*rc::gen::arbitrary<bool>())
        geometry->setIndices(osg::GeoIndicesUI16::create());
    else
        geometry->setIndices(osg::GeoIndicesUI32::create());
    for (const unsigned length : lengths) {
        geometry->getTypes()->addValue(*rc::gen::inRange(0U, 10U));
        geometry->getLengths()->addValue(length);
        for (unsigned corner = 0; corner < length; ++corner)
            geometry->getIndices()->addValue(*rc::gen::inRange(0U, vertexCount));
    }
    return geometry;
}

/// Checks what unify made of the vertices that were there before, one record each.
void checkUnified(const osg::Geometry& geometry, const std::vector<Record>& before)
{
    std::vector<Record> expected;
    for (const Record& record : before)
        if (std::find(expected.begin(), expected.end(), record) == expected.end())
            expected.push_back(record);
    RC_ASSERT(geometry.getPositions()->getSize() == expected.size());
    for (unsigned vertex = 0; vertex < expected.size(); ++vertex)
        RC_ASSERT(recordOf(geometry, vertex) == expected[vertex]);
}

RC_GTEST_PROP(Optimize, PartsAndJoinsVerticesOfAnyTriangles, ())
{
    const osg::RefPtr<osg::Geometry> geometry = randomGeometry();
    const std::vector<Record> corners = cornersOf(*geometry);
    const Ids shared = geometry->getIndices()->getValues();
    kyOptimize::triangulate(geometry, true);
    if (corners.empty()) {
        RC_ASSERT(geometry->getIndices()->getValues() == shared);
        return;
    }
    Ids numbers(corners.size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    RC_ASSERT(geometry->getIndices()->getValues() == numbers);
    RC_ASSERT(geometry->getTypes()->getValues() == Ids{osg::GeoPrimitive::Triangles});
    RC_ASSERT(geometry->getLengths()->getValues() == Ids{geometry->getIndices()->getSize()});
    RC_ASSERT(geometry->getPositions()->getSize() == corners.size());
    RC_ASSERT(cornersOf(*geometry) == corners);

    unify(geometry);
    RC_ASSERT(cornersOf(*geometry) == corners);
    checkUnified(*geometry, corners);
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    unify(geometry);
    RC_ASSERT(journal.notices.empty());
    kyOptimize::triangulate(geometry, false);
    checkUnified(*geometry, corners);
    RC_ASSERT(cornersOf(*geometry) == corners);
}

osg::GeoPropertyPtr newProperty(unsigned n)
{
    if (n == 1)
        return osg::GeoNormals3f::create();
    if (n == 2 || n == 3)
        return osg::GeoColors3f::create();
    return osg::GeoTexCoords2f::create();
}

/// How many of four vertices are left that differ in vertex property n alone, and there one from
/// three.
unsigned countUnified(unsigned n, const Flags& flags)
{
    const auto geometry = tiny::quad();
    geometry->setPositions(tiny::positions(std::vector<osg::Pnt3f>(4)));
    const osg::RefPtr<osg::GeoProperty> property(newProperty(n));
    property->resize(4);
    static_cast<float*>(property->getData())[0] = 1.F;
    geometry->setVertexProperty(n, property);
    unify(geometry, flags);
    return geometry->getPositions()->getSize();
}

TEST(Optimize, ComparesJustTheAskedProperties)
{
    constexpr unsigned colors = 10;
    constexpr std::array<unsigned, 12> flagOfProperty{0, 0, colors, colors, 1, 2, 3, 4, 5, 6, 7, 8};
    for (unsigned n = 1; n < flagOfProperty.size(); ++n) {
        SCOPED_TRACE(n);
        Flags others = compareAll;
        others[flagOfProperty[n]] = false;
        EXPECT_EQ(countUnified(n, compareAll), 2U);
        EXPECT_EQ(countUnified(n, others), 1U);
    }
}

TEST(Optimize, TakesZerosAndOrderAsAsked)
{
    const auto geometry = tiny::quad();
    geometry->setPositions(tiny::positions(
        {osg::Pnt3f(1, 0, 0), osg::Pnt3f(-0.F, 0, 0), osg::Pnt3f(0, 0, 0), osg::Pnt3f(1, 0, 0)}));
    geometry->setIndices(tiny::indices({2, 1, 0, 3, 2, 1}));
    Flags flags = compareAll;
    flags[9] = true;
    unify(geometry, flags);
    EXPECT_EQ(geometry->getIndices()->getValues(), (Ids{2, 1, 0, 0, 2, 1}));
    flags[11] = true;
    unify(geometry, flags);
    EXPECT_EQ(geometry->getIndices()->getValues(), (Ids{0, 1, 2, 2, 0, 1}));
    unify(geometry);
    EXPECT_EQ(geometry->getIndices()->getValues(), (Ids{0, 0, 1, 1, 0, 0}));
    geometry->getIndices()->addValue(2);
    geometry->getPositions()->setValues(std::vector<osg::Pnt3f>(2));
    unify(geometry);
    EXPECT_EQ(geometry->getPositions()->getSize(), 2U) << "an index is beyond the positions";
}

TEST(Optimize, CarriesConstraintsAndWhatLiesBeyondTheVertices)
{
    const auto geometry = tiny::quad();
    setUVConstraints(geometry, {{{0, 2}, {2, 3}}});
    osg::GeoTmpIndexEditInterface(geometry, 4).assign(Ids{3});
    kyOptimize::triangulate(geometry, true);
    EXPECT_TRUE(osg::GeoTmpIndexEditInterface(geometry, 4).isNull());
    EXPECT_EQ(getUVConstraints(geometry).front(), (UVConstraintData{{0, 2, 3, 4}, {4, 5}}));
    std::vector<Vec2f> uvs(8);
    uvs[6] = Vec2f(6, 6);
    uvs[7] = Vec2f(7, 7);
    geometry->setTexSlot(0, tiny::texCoords(uvs));
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    unify(geometry);
    EXPECT_EQ(getUVConstraints(geometry).front(), (UVConstraintData{{0, 2}, {2, 3}}));
    EXPECT_EQ(geometry->getTexSlot(0)->getValues(),
              (std::vector<Vec2f>{Vec2f(), Vec2f(), Vec2f(), Vec2f(), uvs[6], uvs[7]}));
    EXPECT_EQ(journal.notices[0].mask,
              osg::Geometry::PositionsFieldMask | osg::Geometry::TexCoordsFieldMask);
    EXPECT_EQ(journal.notices[1].mask, osg::Geometry::IndicesFieldMask);
    kyOptimize::triangulate(osg::NullFC, true);
    unify(osg::NullFC);
}

TEST(Optimize, MakesMultiIndexedTrianglesSingleIndexedAndIdsWideEnough)
{
    const auto geometry = tiny::multiIndexedQuad();
    kyOptimize::triangulate(geometry, true);
    EXPECT_EQ(geometry->getPositions()->getSize(), 6U);
    EXPECT_EQ(geometry->getTexSlot(0)->getValue(5), Vec2f(6, 6));

    const auto narrow = osg::GeoIndicesUI16::create();
    narrow->resize(65538);
    geometry->setIndices(narrow);
    geometry->setTypes(osg::NullFC);
    geometry->setLengths(osg::NullFC);
    kyOptimize::triangulate(geometry, true);
    EXPECT_EQ(geometry->getIndices()->getValue(65537), 65537U);
}

} // namespace
