#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/IslandReference.h"
#include "UVUtils/editing/PathReference.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/EdgeLists.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>

namespace
{

FlatEdgeList pathOn(const osg::NodePtr& node, const Ids& picked, bool alongBorders = false)
{
    FlatEdgeList edges{1, 2, 3};
    kyUVUtils::findEdgesShortestPath(coreOf(node), node, slot, picked.data(),
                                     static_cast<unsigned>(picked.size()), alongBorders, edges);
    return edges;
}

/// The plain search on what the searches of the library work on.
PathReference referenceOn(const osg::GeometryPtr& work)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(work->getPositions())->values();
    const Ids triangles = work->getIndices()->getValues();
    return {{positions.begin(), positions.end()},
            triangles,
            islandsBySpreading(triangles, static_cast<unsigned>(positions.size()))};
}

/// Rows of vertices at any places, ids row by row:
///
///     5 - 6 - 7 - 8 - 9
///     | / | / | / | / |
///     0 - 1 - 2 - 3 - 4
osg::RefPtr<osg::Node> gridOf(unsigned columns, unsigned rows, bool isRing,
                              osg::Pnt3f (*place)(float x, float y))
{
    std::vector<osg::Pnt3f> positions;
    Ids triangles;
    for (unsigned i = 0; i < columns * rows; ++i) {
        const unsigned x = i % columns;
        const unsigned y = i / columns;
        positions.push_back(place(static_cast<float>(x), static_cast<float>(y)));
        const unsigned right = x + 1 < columns ? i + 1 : i + 1 - columns;
        if (y + 1 < rows && (isRing || right > i))
            triangles.insert(triangles.end(),
                             {i, right, right + columns, i, right + columns, i + columns});
    }
    return osg::RefPtr<osg::Node>(nodeOf(geometryOf(positions, triangles)));
}

osg::RefPtr<osg::Node> flatGrid(unsigned side)
{
    return gridOf(side, side, false, [](float x, float y) { return osg::Pnt3f(x, y, 0); });
}

/// Among them flat grids, on which very many paths are equally long.
osg::RefPtr<osg::Node> anyNode()
{
    switch (*rc::gen::inRange(0, 5)) {
    case 0:
        return osg::RefPtr<osg::Node>(nodeOf(randomSoup()));
    case 1:
    case 2:
        return flatGrid(*rc::gen::inRange(4U, 12U));
    default:
        return randomNode();
    }
}

RC_GTEST_PROP(EdgePaths, AreThoseOfThePlainSearchOnRandomNodes, (bool useMesh))
{
    const osg::RefPtr<osg::Node> node = anyNode();
    std::optional<WithoutCompactMesh> plain;
    if (!useMesh)
        plain.emplace();
    const CompactMeshScope scope(coreOf(node), node, slot);
    PathReference reference = referenceOn(scope.getGeometry());
    const auto vertexCount =
        static_cast<unsigned>(kyUVUtils::getAllVertices(coreOf(node), node).size());
    const Ids picked = *rc::gen::container<Ids>(*rc::gen::inRange<std::size_t>(2, 5),
                                                rc::gen::inRange(0U, vertexCount));
    Ids work = picked;
    for (unsigned& id : work)
        id = scope.getMesh() ? scope.getMesh()->mapVertFToC(id) : id;
    for (const bool onBorders : {false, true}) {
        FlatEdgeList path = reference.shortestPath(work, onBorders);
        scope.toCallerIds(path);
        RC_ASSERT(pathOn(node, picked, onBorders) == path);
    }
}

RC_GTEST_PROP(EdgePaths, GoOnAlongEdgesOnly, (bool bordersOnly, bool stopAtBorders))
{
    const osg::RefPtr<osg::Node> node = anyNode();
    const FlatEdgeList pairs = kyUVUtils::getAllEdges(coreOf(node), node, slot);
    RC_PRE(!pairs.empty());
    const std::vector<Edge> all = edgesOf(pairs);
    const Edge start = *rc::gen::elementOf(all);
    const auto angle = static_cast<float>(*rc::gen::inRange(0, 150));
    const FlatEdgeList found = kyUVUtils::findContiguousEdges(node, slot, start, angle, angle + 30,
                                                              bordersOnly, stopAtBorders);
    for (const Edge& edge : edgesOf(found))
        RC_ASSERT(std::count(all.begin(), all.end(), edge) > 0);
    RC_ASSERT((found.empty() ? bordersOnly : Edge(found[0], found[1]) == start));
}

/// Quads in a row that touch and share no vertex:
///
///     3 - 2 7 - 6 ...
///     | / | | / |
///     0 - 1 4 - 5 ...
TEST(EdgePaths, RunWithinIslandsThatHaveTwinsOfBothEnds)
{
    const osg::GeometryPtr quads = quadsApart(3);
    for (unsigned i = 0; i < 12; ++i)
        quads->getPositions()->setValue(
            osg::Pnt3f(i / 4 + (i % 4 == 1 || i % 4 == 2), i % 4 < 2 ? 0 : 1, 0), i);
    const osg::RefPtr<osg::Node> node(nodeOf(quads));
    const WithoutCompactMesh plain;
    const struct
    {
        const char* name;
        Ids picked;
        bool alongBorders;
        FlatEdgeList edges;
    } cases[] = {{"to the twin of the second one", {0, 7}, false, {0, 2}},
                 {"in the island of the twins that is not the first's", {2, 6}, false, {7, 6}},
                 {"no island has both", {3, 2, 1, 10, 8}, false, {3, 2, 2, 1}},
                 {"one twice", {0, 2, 2, 3}, false, {0, 2}},
                 {"not along the diagonal", {0, 2}, true, {0, 1, 1, 2}},
                 {"stale ids", {0, 99, 2}, false, {0, 2}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(pathOn(node, c.picked, c.alongBorders), c.edges);
    }
    const osg::RefPtr<osg::Node> grid = flatGrid(5);
    EXPECT_EQ(pathOn(grid, {0, 12}, true), FlatEdgeList()) << "12 is inside";
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    EXPECT_EQ(pathOn(broken, {0, 1}), (FlatEdgeList{1, 2, 3})) << "nothing was searched";
}

TEST(EdgePaths, GoOnStraight)
{
    constexpr float pi = 3.14159265F;
    const osg::RefPtr<osg::Node> grid = flatGrid(5);
    const osg::RefPtr<osg::Node> tube = gridOf(6, 3, true, [](float x, float y) {
        return osg::Pnt3f(std::cos(x * pi / 3), std::sin(x * pi / 3), y);
    });
    const osg::RefPtr<osg::Node> sheet(nodeOf(geometryOf( // twice, so that normals cancel out
        {osg::Pnt3f(0, 0, 0), osg::Pnt3f(1, 0, 0), osg::Pnt3f(2, 0, 0), osg::Pnt3f(1, 1, 0)},
        {0, 1, 3, 1, 2, 3, 1, 0, 3, 2, 1, 3})));
    const WithoutCompactMesh plain;
    const FlatEdgeList row{11, 12, 12, 13, 13, 14, 11, 10};
    const FlatEdgeList bottom{1, 2, 2, 3, 3, 4, 1, 0};
    const struct
    {
        const char* name;
        osg::NodePtr node;
        Edge start;
        float surfaceAngle;
        float edgeAngle;
        bool bordersOnly;
        bool stopAtBorders;
        FlatEdgeList edges;
    } cases[] = {
        {"a line of the grid", grid, {12, 11}, 10, 10, false, false, row},
        {"perfectly straight", grid, {11, 12}, 0, 0, false, false, row},
        {"up to the border", grid, {11, 12}, 91, 91, false, true, row},
        {"from the border", grid, {10, 11}, 91, 91, false, true, {10, 11, 11, 12, 12, 13, 13, 14}},
        {"no border edge", grid, {11, 12}, 10, 10, true, false, {}},
        {"along the border", grid, {1, 2}, 10, 10, true, false, bottom},
        {"on the border, where there is no stop", grid, {1, 2}, 10, 10, false, true, bottom},
        {"no vertex", grid, {1, 25}, 10, 10, false, false, {}},
        {"not a number", grid, {1, 2}, std::nanf(""), 10, false, false, {1, 2}},
        {"a ring",
         tube,
         {6, 7},
         10,
         70,
         false,
         false,
         {6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 6, 6, 11}},
        {"too bent in space", tube, {6, 7}, 10, 50, false, false, {6, 7}},
        {"without normals", sheet, {0, 1}, 30, 30, false, false, {0, 1, 1, 2}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(kyUVUtils::findContiguousEdges(c.node, slot, c.start, c.surfaceAngle, c.edgeAngle,
                                                 c.bordersOnly, c.stopAtBorders),
                  c.edges);
    }
    EXPECT_EQ(kyUVUtils::findContiguousEdges(osg::NullFC, slot, {0, 1}, 9, 9, false, false),
              FlatEdgeList());
}

} // namespace
