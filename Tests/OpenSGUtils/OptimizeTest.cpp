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
#include <cmath>
#include <numeric>

using osg::Vec2f;
using tiny::Ids;

namespace
{

using Flags = std::array<bool, 12>;
constexpr Flags asProjectionsDo{true, true, true, true,  true, true,
                                true, true, true, false, true, false};
constexpr unsigned separateZeros = 9;
constexpr unsigned firstUseOrder = 11;

void unify(const osg::GeometryPtr& geometry, const Flags& f = asProjectionsDo)
{
    kyOptimize::unifyVertices(geometry, f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7], f[8], f[9],
                              f[10], f[11]);
}

/// The numbers of a vertex, as bits, in the properties that the flags ask for, or in all.
using Record = std::vector<std::uint32_t>;

Record recordOf(const osg::Geometry& geometry, unsigned vertex, const Flags* flags = nullptr)
{
    constexpr std::array<unsigned, 12> flagOfProperty{12, 0, 10, 10, 1, 2, 3, 4, 5, 6, 7, 8};
    Record record;
    for (unsigned n = 0; n < osg::Geometry::VertexPropertyCount; ++n) {
        const osg::GeoPropertyPtr property = geometry.getVertexProperty(n);
        if (!property || property->getSize() == 0 ||
            (flags && n > 0 && !(*flags)[flagOfProperty[n]]))
            continue;
        const auto width = property->getStride() / unsigned{sizeof(float)};
        const auto* numbers = static_cast<const float*>(property->getData());
        for (unsigned k = 0; k < width; ++k) {
            const float number = vertex < property->getSize() ? numbers[vertex * width + k] : 0.F;
            const bool isZero = number == 0.F && flags && !(*flags)[separateZeros];
            record.push_back(isZero ? 0 : std::bit_cast<std::uint32_t>(number));
        }
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

/// Of few numbers, so that vertices come out equal.
osg::RefPtr<osg::Geometry> randomGeometry()
{
    osg::RefPtr<osg::Geometry> geometry(osg::Geometry::create());
    const auto vertexCount = *rc::gen::inRange(1U, 12U);
    const auto add = [&](unsigned n, const auto& property) {
        if (n != 0 && *rc::gen::inRange(0, 3) != 0)
            return;
        const bool isShort = n != 0 && *rc::gen::inRange(0, 4) == 0;
        property->resize(isShort ? *rc::gen::inRange(0U, vertexCount) : vertexCount);
        for (auto& element : property->values())
            for (unsigned k = 0; k < property->getStride() / sizeof(float); ++k)
                element[k] = *rc::gen::weightedElement<float>(
                    {{30, 1.F}, {10, 2.F}, {3, 0.F}, {2, -0.F}, {2, NAN}});
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
    geometry->setTypes(osg::GeoPTypesUI8::create());
    geometry->setLengths(osg::GeoPLengthsUI32::create());
    geometry->setIndices(*rc::gen::arbitrary<bool>()
                             ? osg::GeoIndicesPtr(osg::GeoIndicesUI16::create())
                             : osg::GeoIndicesUI32::create());
    for (const unsigned length : *rc::gen::container<Ids>(rc::gen::inRange(0U, 9U))) {
        geometry->getTypes()->addValue(*rc::gen::inRange(0U, 10U));
        geometry->getLengths()->addValue(length);
        for (unsigned corner = 0; corner < length; ++corner)
            geometry->getIndices()->addValue(*rc::gen::inRange(0U, vertexCount));
    }
    return geometry;
}

RC_GTEST_PROP(Optimize, PartsAnyPrimitivesIntoTriangles, ())
{
    const osg::RefPtr<osg::Geometry> geometry = randomGeometry();
    const std::vector<Record> corners = cornersOf(*geometry);
    const Ids before = geometry->getIndices()->getValues();
    const bool ownVertices = *rc::gen::arbitrary<bool>();
    kyOptimize::triangulate(geometry, ownVertices);
    if (corners.empty()) {
        RC_ASSERT(geometry->getIndices()->getValues() == before);
        return;
    }
    RC_ASSERT(geometry->getTypes()->getValues() == Ids{osg::GeoPrimitive::Triangles});
    RC_ASSERT(geometry->getLengths()->getValues() == Ids{geometry->getIndices()->getSize()});
    RC_ASSERT(cornersOf(*geometry) == corners);
    Ids numbers(corners.size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    RC_ASSERT(!ownVertices || geometry->getIndices()->getValues() == numbers);
    RC_ASSERT(!ownVertices || geometry->getPositions()->getSize() == corners.size());
}

RC_GTEST_PROP(Optimize, JoinsVerticesThatAreEqualInWhatIsAsked, ())
{
    const osg::RefPtr<osg::Geometry> geometry = randomGeometry();
    const auto flags = *rc::gen::container<Flags>(rc::gen::arbitrary<bool>());
    const Ids before = geometry->getIndices()->getValues();
    Ids sequence = flags[firstUseOrder] ? before : Ids();
    std::vector<Record> keys; // [vertex]
    for (unsigned vertex = 0; vertex < geometry->getPositions()->getSize(); ++vertex) {
        keys.push_back(recordOf(*geometry, vertex, &flags));
        sequence.push_back(vertex);
    }
    std::vector<Record> distinct;
    std::vector<Record> values; // of the first vertex with each
    for (const unsigned vertex : sequence) {
        if (std::count(distinct.begin(), distinct.end(), keys[vertex]) > 0)
            continue;
        distinct.push_back(keys[vertex]);
        const auto first = std::find(keys.begin(), keys.end(), keys[vertex]) - keys.begin();
        values.push_back(recordOf(*geometry, static_cast<unsigned>(first)));
    }
    unify(geometry, flags);
    RC_ASSERT(geometry->getPositions()->getSize() == values.size());
    for (unsigned vertex = 0; vertex < values.size(); ++vertex)
        RC_ASSERT(recordOf(*geometry, vertex) == values[vertex]);
    RC_ASSERT(geometry->getIndices()->getSize() == before.size());
    for (unsigned i = 0; i < before.size(); ++i)
        RC_ASSERT(distinct[geometry->getIndices()->getValue(i)] == keys[before[i]]);
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    unify(geometry, flags);
    RC_ASSERT(journal.notices.empty());
}

TEST(Optimize, CarriesConstraintsAndWhatLiesBeyondTheVertices)
{
    using G = osg::Geometry;
    const auto geometry = tiny::quad();
    setUVConstraints(geometry, {{{0, 2}, {2, 3}}});
    osg::GeoTmpIndexEditInterface selection(geometry, 4);
    selection.assign(Ids{3});
    tiny::NoticeJournal journal;
    journal.watch(geometry);
    kyOptimize::triangulate(geometry, true);
    EXPECT_TRUE(selection.isNull());
    EXPECT_EQ(getUVConstraints(geometry).front(), (UVConstraintData{{0, 2, 3, 4}, {4, 5}}));
    const Vec2f o;
    geometry->setTexSlot(0, tiny::texCoords({o, o, o, o, o, o, Vec2f(6, 6), Vec2f(7, 7)}));
    selection.assign(Ids{5});
    unify(geometry);
    EXPECT_TRUE(selection.isNull());
    EXPECT_EQ(getUVConstraints(geometry).front(), (UVConstraintData{{0, 2}, {2, 3}}));
    EXPECT_EQ(geometry->getTexSlot(0)->getValues(),
              (std::vector<Vec2f>{o, o, o, o, Vec2f(6, 6), Vec2f(7, 7)}));
    const osg::FieldMask masks[] = {
        G::PositionsFieldMask, G::TypesFieldMask | G::LengthsFieldMask | G::IndicesFieldMask,
        G::PositionsFieldMask | G::TexCoordsFieldMask, G::IndicesFieldMask};
    EXPECT_TRUE(std::equal(std::begin(masks), std::end(masks), journal.notices.begin(),
                           journal.notices.end(),
                           [](auto& mask, auto& notice) { return mask == notice.mask; }));
    geometry->getIndices()->addValue(4);
    geometry->getPositions()->setValues(std::vector<osg::Pnt3f>(4));
    unify(geometry);
    EXPECT_EQ(geometry->getPositions()->getSize(), 4U) << "an index is beyond the positions";
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
