#include "OpenSG/TriangleIterator.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>

using namespace osg;

namespace
{

using Triangle = std::array<unsigned, 3>;
using Triangles = std::vector<Triangle>;

Triangles walked(const RefPtr<Geometry>& geometry)
{
    Triangles result;
    for (auto t = geometry->beginTriangles(); t != geometry->endTriangles(); ++t) {
        EXPECT_EQ(t.getIndex(), result.size());
        result.push_back({t.getPositionIndex(0), t.getPositionIndex(1), t.getPositionIndex(2)});
    }
    return result;
}

TEST(TriangleIterator, NothingToWalkIsAtTheEndAtOnce)
{
    const RefPtr<Geometry> empty(Geometry::create());
    EXPECT_TRUE(walked(empty).empty());
    empty->setIndices(tiny::indices({}));
    EXPECT_TRUE(walked(empty).empty());
    auto end = empty->endTriangles();
    EXPECT_TRUE(++end == empty->endTriangles());
}

TEST(TriangleIterator, IdsBeyondThePositionsReadAsTheOrigin)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    geometry->setIndices(tiny::indices({2, 4, 0xFFFFFFFF, 0}));
    EXPECT_EQ(walked(geometry).size(), 1U) << "whole triangles only";
    const auto t = geometry->beginTriangles();
    EXPECT_EQ(t.getPosition(0), Pnt3f(1, 1, 0));
    EXPECT_EQ(t.getPosition(1), Pnt3f());
    EXPECT_EQ(t.getPosition(2), Pnt3f());
    EXPECT_EQ(t.getPositionIndex(2), 0xFFFFFFFFU);
    geometry->setPositions(NullFC);
    EXPECT_EQ(geometry->beginTriangles().getPosition(0), Pnt3f());
}

/// The triangles of one primitive, found as a display would: corner after corner.
Triangles drawn(unsigned type, const tiny::Ids& corners)
{
    Triangles result;
    tiny::Ids held;
    std::size_t taken = 0;
    for (const unsigned corner : corners) {
        held.push_back(corner);
        ++taken;
        if (type == GeoPrimitive::Triangles && held.size() == 3) {
            result.push_back({held[0], held[1], held[2]});
            held.clear();
        } else if (type == GeoPrimitive::TriangleStrip && held.size() == 3) {
            const bool odd = taken % 2 == 0;
            result.push_back({held[odd ? 1 : 0], held[odd ? 0 : 1], held[2]});
            held.erase(held.begin());
        } else if ((type == GeoPrimitive::TriangleFan || type == GeoPrimitive::Polygon) &&
                   held.size() == 3)
        {
            result.push_back({held[0], held[1], held[2]});
            held.erase(held.begin() + 1);
        } else if (type == GeoPrimitive::Quads && held.size() == 4) {
            result.push_back({held[0], held[1], held[2]});
            result.push_back({held[0], held[2], held[3]});
            held.clear();
        } else if (type == GeoPrimitive::QuadStrip && held.size() == 4) {
            result.push_back({held[0], held[1], held[3]});
            result.push_back({held[0], held[3], held[2]});
            held.erase(held.begin(), held.begin() + 2);
        }
    }
    return result;
}

RC_GTEST_PROP(TriangleIteratorProperty, WalksWhatIsDrawnForAnyMixOfPrimitives, ())
{
    const auto stride = *rc::gen::inRange<std::size_t>(1, 4);
    const auto offset = *rc::gen::inRange<std::size_t>(0, stride);
    const auto numbers = *rc::gen::container<tiny::Ids>(rc::gen::inRange(0U, 1000U));
    const auto types = *rc::gen::container<tiny::Ids>(rc::gen::inRange(0U, 11U));
    const auto lengths = *rc::gen::container<tiny::Ids>(types.size(), rc::gen::inRange(0U, 9U));

    const RefPtr<Geometry> geometry(Geometry::create());
    const bool isNarrow = *rc::gen::arbitrary<bool>();
    geometry->setIndices(isNarrow ? GeoIndicesPtr(GeoIndicesUI16::create())
                                  : GeoIndicesPtr(GeoIndicesUI32::create()));
    geometry->getIndices()->setValues(numbers);
    geometry->setTypes(GeoPTypesUI8::create());
    geometry->getTypes()->setValues(types);
    geometry->setLengths(GeoPLengthsUI32::create());
    geometry->getLengths()->setValues(lengths);
    std::vector<std::uint16_t> mapping(stride, Geometry::MapNormal);
    mapping[offset] = Geometry::MapPosition;
    geometry->setIndexMapping(mapping);

    Triangles expected;
    std::size_t next = 0;
    const std::size_t cornerCount = numbers.size() / stride;
    for (std::size_t primitive = 0; primitive < types.size(); ++primitive) {
        tiny::Ids corners;
        for (unsigned i = 0; i < lengths[primitive] && next < cornerCount; ++i, ++next)
            corners.push_back(numbers[next * stride + offset]);
        const Triangles more = drawn(types[primitive], corners);
        expected.insert(expected.end(), more.begin(), more.end());
    }
    RC_ASSERT(walked(geometry) == expected);
}

} // namespace
