#include "UVUtils/solver/kyUnfold3DData.h"

#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <limits>
#include <set>
#include <string>

using namespace kyUnfold3D;
using Texts = std::vector<std::string>;

namespace
{

class Unfold3DData : public testing::Test
{
protected:
    kyUnfold3DData read(const osg::GeometryPtr& geometry, UVWInputMode mode = Positions3D,
                        const UVs& uvs = {}, kyUVTypes::UVSet slot = kyUVTypes::UVSet0)
    {
        const osg::RefPtr<osg::Geometry> held(geometry);
        return kyUnfold3DData(geometry, slot, mode, uvs);
    }

    LogCapture log;
    OutputCapture output;
};

TEST_F(Unfold3DData, HoldsTheTrianglesAsFlatArrays)
{
    const kyUnfold3DData data = read(quad());
    EXPECT_TRUE(data.isValid());
    EXPECT_EQ(data.getPolySizes(), (std::vector<int>{3, 3}));
    EXPECT_EQ(data.getPoly3DIDs(), (std::vector<int>{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(data.getPolyUVWIDs(), data.getPoly3DIDs());
    EXPECT_EQ(data.getCoordsXYZ(), (std::vector<double>{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}));
    EXPECT_EQ(data.getCoordsUVW(), data.getCoordsXYZ());
    EXPECT_EQ(data.getNumVertices(), 4);
    EXPECT_EQ(data.getNumUVs(), 4);
}

TEST_F(Unfold3DData, RefusesWhatIsNoTriangleList)
{
    struct Case
    {
        const char* name;
        std::function<osg::GeometryPtr()> make;
        const char* lastLine;
    };
    const auto quadWith = [](const std::function<void(const osg::GeometryPtr&)>& change) {
        return [change] {
            const osg::GeometryPtr geometry = quad();
            change(geometry);
            return geometry;
        };
    };
    const Case cases[] = {
        {"no indices", quadWith([](auto& g) { g->setIndices(osg::NullFC); }), "osg_positions 4\n"},
        {"empty indices", quadWith([](auto& g) { g->getIndices()->clear(); }), "osg_indices 0\n"},
        {"no positions", quadWith([](auto& g) { g->setPositions(osg::NullFC); }),
         "osg_indices 6\n"},
        {"empty positions", quadWith([](auto& g) { g->getPositions()->clear(); }),
         "osg_indices 6\n"},
        {"homogeneous positions", quadWith([](auto& g) {
             const auto positions = osg::GeoPositions4f::create();
             positions->resize(4);
             g->setPositions(positions);
         }),
         "osg_indices 6\n"},
        {"empty lengths", quadWith([](auto& g) { g->setLengths(osg::GeoPLengthsUI32::create()); }),
         "osg_lengths 0\n"},
        {"lengths without types", quadWith([](auto& g) {
             setPrimitive(g, 4, 6);
             g->setTypes(osg::NullFC);
         }),
         "osg geo: unsupported primitive type\n"},
        {"a strip", quadWith([](auto& g) { setPrimitive(g, 5, 6); }),
         "osg geo: unsupported primitive type\n"},
        {"types without lengths", quadWith([](auto& g) {
             setPrimitive(g, 4, 6);
             g->setLengths(osg::NullFC);
         }),
         "osg_types 1\n"},
        {"half a triangle", quadWith([](auto& g) { g->getIndices()->resize(4); }),
         "no triangles? 1.33333\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_FALSE(read(c.make()).isValid());
        const std::string text = output.take();
        EXPECT_TRUE(text.ends_with(c.lastLine)) << text;
    }
    EXPECT_FALSE(read(osg::NullFC).isValid());
    EXPECT_EQ(output.take(), "");
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(Unfold3DData, TakesTheTriangleCountFromTheLengths)
{
    const osg::GeometryPtr geometry = quad();
    setPrimitive(geometry, 4, 6);
    EXPECT_EQ(read(geometry).getPolySizes(), (std::vector<int>{3, 3}));
    EXPECT_EQ(output.take(), "geo:\n"
                             "osg_positions 4\n"
                             "osg_indices 6\n"
                             "osg_lengths 1\n"
                             "osg_types 1\n"
                             "osg_lengths content: 6 \n"
                             "use geo data for input uvs\n"
                             "assigning 3d pos to UVW\n");
}

TEST_F(Unfold3DData, AnAbsurdLengthTakesNoAbsurdMemory)
{
    const osg::GeometryPtr geometry = quad();
    setPrimitive(geometry, 4, 0xFFFFFFFF);
    const kyUnfold3DData data = read(geometry);
    EXPECT_NE(3 * data.getPolySizes().size(), data.getPoly3DIDs().size()) << "the solver's to see";
    EXPECT_LT(data.getPolySizes().size(), 100U);
}

TEST_F(Unfold3DData, MakesAMultiIndexedGeometrySingleIndexed)
{
    const osg::GeometryPtr geometry = geometryOf(
        {osg::Pnt3f(0.F, 0.F, 0.F), osg::Pnt3f(1.F, 0.F, 0.F), osg::Pnt3f(0.F, 1.F, 0.F)},
        {0, 2, 1, 1, 2, 0});
    setUVs(geometry, 0, {osg::Vec2f(5.F, 0.F), osg::Vec2f(6.F, 0.F), osg::Vec2f(7.F, 0.F)});
    geometry->setIndexMapping({osg::Geometry::MapPosition, osg::Geometry::MapTexCoords});
    const kyUnfold3DData data = read(geometry, GeometryTexCoords);
    EXPECT_EQ(data.getPoly3DIDs(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(data.getCoordsUVW(), (std::vector<double>{7, 0, 0, 6, 0, 0, 5, 0, 0}));
    EXPECT_TRUE(output.take().starts_with("osg geo: index mapping 2  - making single indexed \n"));
}

TEST_F(Unfold3DData, StartsFromWhereTheModeSays)
{
    const UVs mapped{osg::Vec2f(0.F, 0.F), osg::Vec2f(2.F, 0.F), osg::Vec2f(2.F, 2.F),
                     osg::Vec2f(0.F, 2.F)};
    const UVs almostZero(4, osg::Vec2f(0.000001F, -0.000001F));
    UVs justAbove = almostZero;
    justAbove[3] = osg::Vec2f(0.F, 0.0000011F);
    const std::vector<double> positions{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    const std::vector<double> fromMapped{0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0};

    const auto start = [&](UVWInputMode mode, const UVs& slot, const UVs& input) {
        const osg::GeometryPtr geometry = quad();
        setUVs(geometry, 2, slot);
        return read(geometry, mode, input, kyUVTypes::UVSet2).getCoordsUVW();
    };
    EXPECT_EQ(start(InputUVs, {}, mapped), fromMapped);
    EXPECT_EQ(start(InputUVs, mapped, UVs(3)), positions) << "the slot is not the fallback";
    EXPECT_EQ(start(GeometryTexCoords, mapped, {}), fromMapped);
    EXPECT_EQ(start(GeometryTexCoords, {}, mapped), positions);
    output.take();
    EXPECT_EQ(start(GeometryTexCoords, almostZero, {}), positions);
    EXPECT_TRUE(output.take().ends_with("use geo data for input uvs\n"
                                        "no tex coords or all zero\n"
                                        "assigning 3d pos to UVW\n"));
    EXPECT_NE(start(GeometryTexCoords, justAbove, {}), positions);
    EXPECT_EQ(start(Positions3D, mapped, mapped), positions);
}

TEST_F(Unfold3DData, ASlotOfAnotherSizeOrKindDoesNotServe)
{
    const osg::GeometryPtr shortSlot = quad();
    setUVs(shortSlot, 0, UVs(3, osg::Vec2f(1.F, 1.F)));
    EXPECT_FALSE(read(shortSlot, GeometryTexCoords).isValid());

    const osg::GeometryPtr threeFloats = quad();
    const auto texCoords = osg::GeoTexCoords3f::create();
    texCoords->takeValues(std::vector<osg::Vec3f>(4, osg::Vec3f(1.F, 1.F, 1.F)));
    threeFloats->setTexCoords(texCoords);
    const kyUnfold3DData data = read(threeFloats, GeometryTexCoords);
    EXPECT_EQ(data.getCoordsUVW(), data.getCoordsXYZ());
}

TEST_F(Unfold3DData, AWrongSlotNumberCountsAsAbsent)
{
    for (const int slot : {-1, 8, std::numeric_limits<int>::max()})
        EXPECT_TRUE(read(quad(), GeometryTexCoords, {}, kyUVTypes::UVSet(slot)).isValid());
}

TEST_F(Unfold3DData, NumbersEdgesByFirstVisitFromTheClosingEdge)
{
    kyUnfold3DData data = read(quad());
    EXPECT_EQ(data.getEdgeIds({2, 0, 0, 1, 1, 2, 3, 0, 2, 3}), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(data.getEdgeIds({3, 2}), (std::vector<int>{4})) << "in either order";
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(Unfold3DData, APairThatIsNoEdgeIsLoggedAndLeftOut)
{
    kyUnfold3DData data = read(quad());
    EXPECT_EQ(data.getEdgeIds({1, 3, 0, 1, 7, 7}), (std::vector<int>{1}));
    EXPECT_EQ(log.lines, (Texts{"error: No edge id found for vertices 1 3",
                                "error: No edge id found for vertices 7 7"}));
    log.lines.clear();
    EXPECT_TRUE(data.getEdgeIds({0, 1, 2}).empty());
    EXPECT_TRUE(data.getEdgeIds({}).empty());
    EXPECT_EQ(log.lines, (Texts{"error: getEdgeIds uneven number of vertex ids"}));
}

TEST_F(Unfold3DData, TurnsPolygonEdgesIntoVertexPairs)
{
    const kyUnfold3DData data = read(quad());
    EXPECT_EQ(data.getEdgesVertIds({1, 0, 1, 1, 1, 2}), (Ids{0, 2, 2, 3, 3, 0}));
    EXPECT_EQ(data.getEdgesVertIds({-1, 0, 2, 0, 0, 3, 0, -1, 0, 1}), (Ids{1, 2}));
    EXPECT_EQ(log.lines, Texts());
    EXPECT_TRUE(data.getEdgesVertIds({0}).empty());
    EXPECT_EQ(log.lines, (Texts{"error: getEdgesVertIds uneven number of vertex ids"}));
}

RC_GTEST_PROP(Unfold3DDataEdges, EdgeNumbersCountTheDistinctEdges, ())
{
    const unsigned int vertexCount = 8;
    const auto triangles = *rc::gen::inRange(1, 30);
    const Ids indices = *rc::gen::container<Ids>(static_cast<std::size_t>(3 * triangles),
                                                 rc::gen::inRange(0U, vertexCount));
    const osg::RefPtr<osg::Geometry> geometry(
        geometryOf(std::vector<osg::Pnt3f>(vertexCount), indices));
    const OutputCapture quiet;
    kyUnfold3DData data(geometry.get(), kyUVTypes::UVSet0, Positions3D, {});

    std::set<Edge> distinct;
    std::set<int> numbers;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const unsigned int a = indices[i];
        const unsigned int b = indices[i % 3 == 2 ? i - 2 : i + 1];
        distinct.insert(Edge(a, b));
        const std::vector<int> number = data.getEdgeIds({b, a});
        RC_ASSERT(number.size() == 1U);
        numbers.insert(number[0]);
    }
    RC_ASSERT(numbers.size() == distinct.size());
    RC_ASSERT(*numbers.begin() == 0 && *numbers.rbegin() + 1 == static_cast<int>(numbers.size()));
}

} // namespace
