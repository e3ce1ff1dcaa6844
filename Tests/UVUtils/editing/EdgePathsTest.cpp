#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/IslandReference.h"
#include "UVUtils/editing/PathReference.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/EdgeLists.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

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

/// A flat grid, on which very many paths are equally long, ids row by row:
///
///     5 - 6 - 7 - 8 - 9
///     | / | / | / | / |
///     0 - 1 - 2 - 3 - 4
///
/// cracks  makes two islands of it, with slits and loose triangles, and maybe bends it
osg::RefPtr<osg::Node> gridOf(unsigned side, Random* cracks = nullptr)
{
    const unsigned count = side * side;
    std::vector<osg::Pnt3f> positions;
    for (unsigned i = 0; i < count; ++i)
        positions.emplace_back(i % side, i / side, 0);
    if (cracks && cracks->oneIn(2))
        for (osg::Pnt3f& position : positions)
            position[2] = 0.4F * static_cast<float>(cracks->below(3));
    if (cracks)
        for (unsigned i = 0; i < count; ++i)
            positions.push_back(positions[i]);
    Ids triangles;
    for (unsigned i = 0; i + side < count; ++i) {
        if (i % side + 1 == side)
            continue;
        for (const unsigned corner : {i, i + 1, i + side + 1, i, i + side + 1, i + side}) {
            triangles.push_back(corner + (cracks && i % side >= side / 2 ? count : 0));
            if (!cracks || !cracks->oneIn(12))
                continue;
            triangles.back() = static_cast<unsigned>(positions.size());
            positions.push_back(positions[corner]);
        }
    }
    const osg::GeometryPtr grid = geometryOf(positions, triangles);
    UVs uvs; // which keep a mesh from closing the cracks
    for (std::size_t v = 0; v < positions.size(); ++v)
        uvs.emplace_back(v, 0);
    grid->setTexSlot(slot, tiny::texCoords(uvs));
    return osg::RefPtr<osg::Node>(nodeOf(grid));
}

osg::RefPtr<osg::Node> anyNode()
{
    Random random(*rc::gen::arbitrary<std::uint32_t>());
    const unsigned kind = random.below(6);
    return kind == 0   ? randomNode()
           : kind == 1 ? osg::RefPtr<osg::Node>(nodeOf(randomSoup()))
           : kind == 2 ? gridOf(random.between(4, 11))
                       : gridOf(random.between(3, 8), &random);
}

RC_GTEST_PROP(EdgePaths, AreThoseOfThePlainSearches, (bool useMesh, bool onBorders, bool stop))
{
    const osg::RefPtr<osg::Node> node = anyNode();
    const WithoutCompactMesh plain;
    kyUVUtils::setUseCompactMesh(useMesh);
    const CompactMeshScope scope(coreOf(node), node, slot);
    PathReference reference = referenceOn(scope.getGeometry());
    const auto end = sizeOf(kyUVUtils::getAllVertices(coreOf(node), node));
    const auto angle = [] { return *rc::gen::element(0.F, 10.F, 50.F, 91.F, 180.F); };
    for (int round = 0; round < 5; ++round) {
        Ids picked = *rc::gen::container<Ids>( // the last ones are along cracks
            *rc::gen::inRange<std::size_t>(2, 5),
            rc::gen::oneOf(rc::gen::inRange(0U, end), rc::gen::inRange(2 * end / 3, end)));
        const FlatEdgeList path = pathOn(node, picked, onBorders);
        const FlatEdgeList all = kyUVUtils::getAllEdges(coreOf(node), node, slot);
        Edge start(picked[0], picked[1]);
        if (!all.empty() && round > 0)
            start = *rc::gen::elementOf(edgesOf(all));
        const float inSurface = angle();
        const float inSpace = angle();
        const FlatEdgeList walk =
            kyUVUtils::findContiguousEdges(node, slot, start, inSurface, inSpace, onBorders, stop);

        if (scope.getMesh()) {
            start = scope.getMesh()->mapEdgeFToC(start);
            for (unsigned& id : picked)
                id = scope.getMesh()->mapVertFToC(id);
        }
        FlatEdgeList plainPath = reference.shortestPath(picked, onBorders);
        scope.toCallerIds(plainPath);
        RC_ASSERT(path == plainPath);
        FlatEdgeList plainWalk =
            reference.contiguousEdges(start, inSurface, inSpace, onBorders, stop);
        scope.toCallerIds(plainWalk);
        RC_ASSERT(walk == plainWalk);
    }
}

TEST(EdgePaths, OfAGridAreThoseThatOneSees)
{
    const osg::RefPtr<osg::Node> grid = gridOf(5);
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    const auto goOn = [](const osg::NodePtr& node, const Edge& edge, bool stopAtBorders) {
        return kyUVUtils::findContiguousEdges(node, slot, edge, 10, 10, false, stopAtBorders);
    };
    EXPECT_EQ(pathOn(broken, {0, 1}), (FlatEdgeList{1, 2, 3})) << "nothing was searched";
    EXPECT_EQ(goOn(broken, {0, 1}, false), FlatEdgeList());
    EXPECT_EQ(goOn(osg::NullFC, {0, 1}, false), FlatEdgeList());
    EXPECT_EQ(goOn(grid, {1, 25}, false), FlatEdgeList()) << "of the mesh";
    const WithoutCompactMesh plain;
    EXPECT_EQ(goOn(grid, {1, 25}, false), FlatEdgeList());
    EXPECT_EQ(goOn(grid, {12, 11}, true), (FlatEdgeList{11, 12, 12, 13, 13, 14, 11, 10}));
    EXPECT_EQ(goOn(grid, {11, 10}, true), (FlatEdgeList{10, 11, 11, 12, 12, 13, 13, 14}));
    EXPECT_EQ(pathOn(grid, {18, 0, 1}), (FlatEdgeList{18, 12, 12, 6, 6, 0, 0, 1}));
    EXPECT_EQ(pathOn(grid, {0, 99, 1, 1, 2}), (FlatEdgeList{0, 1})) << "no vertex 99";
    EXPECT_EQ(pathOn(grid, {0, 6}, true), FlatEdgeList());
    EXPECT_EQ(pathOn(grid, {9, 0, 4}, true),
              (FlatEdgeList{9, 4, 4, 3, 3, 2, 2, 1, 1, 0, 0, 1, 1, 2, 2, 3, 3, 4}));
}

} // namespace
