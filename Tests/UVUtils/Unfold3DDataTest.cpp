#include "UVUtils/solver/kyUnfold3DData.h"

#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"

#include <gtest/gtest.h>

#include <functional>
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

TEST_F(Unfold3DData, RefusesWhatIsNoTriangleList)
{
    struct Case
    {
        const char* name;
        std::function<void(osg::Geometry&)> spoil;
        const char* lastLine;
    };
    const Case cases[] = {
        {"no indices", [](auto& g) { g.setIndices(osg::NullFC); }, "osg_positions 4\n"},
        {"empty indices", [](auto& g) { g.getIndices()->clear(); }, "osg_indices 0\n"},
        {"two index lists without indices",
         [](auto& g) {
             g.setIndexMapping({osg::Geometry::MapPosition, osg::Geometry::MapTexCoords});
             g.setIndices(osg::NullFC);
         },
         "osg geo: index mapping 2  - making single indexed \n"},
        {"no positions", [](auto& g) { g.setPositions(osg::NullFC); }, "geo:\nosg_indices 6\n"},
        {"empty positions", [](auto& g) { g.getPositions()->clear(); }, "osg_indices 6\n"},
        {"homogeneous positions", [](auto& g) { g.setPositions(osg::GeoPositions4f::create()); },
         "geo:\nosg_indices 6\n"},
        {"empty lengths", [](auto& g) { g.setLengths(osg::GeoPLengthsUI32::create()); },
         "osg_lengths 0\n"},
        {"lengths without types", [](auto& g) { setPrimitives(g, {}, {6}); },
         "osg geo: unsupported primitive type\n"},
        {"a strip", [](auto& g) { setPrimitives(g, {5}, {6}); },
         "osg geo: unsupported primitive type\n"},
        {"types without lengths", [](auto& g) { setPrimitives(g, {4}, {}); }, "osg_types 1\n"},
        {"half a triangle", [](auto& g) { g.getIndices()->resize(4); }, "no triangles? 1.33333\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const osg::GeometryPtr geometry = quad();
        c.spoil(*geometry);
        EXPECT_FALSE(read(geometry).isValid());
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
    setPrimitives(*geometry, {4}, {6});
    geometry->setTexCoords(tiny::texCoords(UVs(4)));
    const kyUnfold3DData data = read(geometry);
    EXPECT_TRUE(data.isValid());
    EXPECT_EQ(data.getPolySizes(), (std::vector<int>{3, 3}));
    EXPECT_EQ(data.getPolyUVWIDs(), (std::vector<int>{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(data.getNumVertices(), 4);
    EXPECT_EQ(data.getNumUVs(), 4);
    EXPECT_EQ(output.take(), "geo:\n"
                             "osg_positions 4\n"
                             "osg_indices 6\n"
                             "osg_lengths 1\n"
                             "osg_types 1\n"
                             "osg_texCoord 4\n"
                             "osg_lengths content: 6 \n"
                             "use geo data for input uvs\n"
                             "assigning 3d pos to UVW\n");
}

TEST_F(Unfold3DData, AnAbsurdLengthIsLeftToTheSolverToRefuseButTakesNoAbsurdMemory)
{
    const osg::GeometryPtr geometry = quad();
    setPrimitives(*geometry, {4}, {0xFFFFFFFF});
    EXPECT_LT(read(geometry).getPolySizes().size(), 2'000'000U);
}

TEST_F(Unfold3DData, MakesAMultiIndexedGeometrySingleIndexed)
{
    const osg::GeometryPtr geometry = geometryOf(
        {osg::Pnt3f(0.F, 0.F, 0.F), osg::Pnt3f(1.F, 0.F, 0.F), osg::Pnt3f(0.F, 1.F, 0.F)},
        {0, 2, 1, 1, 2, 0});
    geometry->setTexCoords(tiny::texCoords({Vec2f(5.F, 0.F), Vec2f(6.F, 0.F), Vec2f(7.F, 0.F)}));
    geometry->setIndexMapping({osg::Geometry::MapPosition, osg::Geometry::MapTexCoords});
    const kyUnfold3DData data = read(geometry, GeometryTexCoords);
    EXPECT_EQ(data.getPoly3DIDs(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(data.getCoordsUVW(), (std::vector<double>{7, 0, 0, 6, 0, 0, 5, 0, 0}));
    EXPECT_TRUE(output.take().starts_with("osg geo: index mapping 2  - making single indexed \n"));
}

TEST_F(Unfold3DData, StartsFromWhereTheModeSays)
{
    const UVs mapped{Vec2f(0.F, 0.F), Vec2f(2.F, 0.F), Vec2f(2.F, 2.F), Vec2f(0.F, 2.F)};
    const UVs almostZero(4, Vec2f(0.000001F, -0.000001F));
    UVs justAbove = almostZero;
    justAbove[3] = Vec2f(0.F, 0.0000011F);
    const std::vector<double> positions{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    const std::vector<double> fromMapped{0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0};

    const auto start = [&](UVWInputMode mode, const UVs& slot, const UVs& input) {
        const osg::GeometryPtr geometry = quad();
        geometry->setTexSlot(2, tiny::texCoords(slot));
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

TEST_F(Unfold3DData, ASlotOfAnotherSizeKindOrNumberDoesNotServe)
{
    const osg::GeometryPtr shortSlot = quad();
    shortSlot->setTexCoords(tiny::texCoords(UVs(3, Vec2f(1.F, 1.F))));
    EXPECT_FALSE(read(shortSlot, GeometryTexCoords).isValid());

    const osg::GeometryPtr threeFloats = quad();
    threeFloats->setTexCoords(osg::GeoTexCoords3f::create());
    threeFloats->getTexCoords()->setValues(UVs(4, Vec2f(1.F, 1.F)));
    const kyUnfold3DData data = read(threeFloats, GeometryTexCoords);
    EXPECT_EQ(data.getCoordsUVW(), data.getCoordsXYZ());

    for (const int slot : {-1, 8})
        EXPECT_TRUE(read(quad(), GeometryTexCoords, {}, kyUVTypes::UVSet(slot)).isValid());
}

TEST_F(Unfold3DData, NumbersEdgesByFirstVisitAndLogsPairsThatAreNone)
{
    kyUnfold3DData data = read(quad());
    EXPECT_EQ(data.getEdgeIds({2, 0, 0, 1, 1, 2, 3, 0, 3, 2}), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_TRUE(data.getEdgeIds({}).empty());
    EXPECT_EQ(log.lines, Texts());
    EXPECT_EQ(data.getEdgeIds({1, 3, 0, 1, 7, 7}), (std::vector<int>{1}));
    EXPECT_TRUE(data.getEdgeIds({0, 1, 2}).empty());
    EXPECT_EQ(log.lines, (Texts{"error: No edge id found for vertices 1 3",
                                "error: No edge id found for vertices 7 7",
                                "error: getEdgeIds uneven number of vertex ids"}));
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

} // namespace
