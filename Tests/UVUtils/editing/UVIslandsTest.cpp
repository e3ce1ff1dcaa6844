#include "UVUtils/Meshes.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/IslandReference.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>

namespace
{

/// What a search appends.
struct Found
{
    Ids triangles;
    Ids triangleCounts;
    Ids vertices;
    Ids vertexCounts;

    friend bool operator==(const Found&, const Found&) = default;

    std::vector<Ids> vertexLists() const { return split(vertices, vertexCounts); }
    std::vector<Ids> triangleLists() const { return split(triangles, triangleCounts); }

private:
    static std::vector<Ids> split(const Ids& all, const Ids& counts)
    {
        std::vector<Ids> lists;
        auto next = all.begin();
        for (const unsigned int count : counts) {
            lists.emplace_back(next, next + count);
            next += count;
        }
        EXPECT_EQ(next, all.end());
        return lists;
    }
};

void findInto(Found& found, const osg::NodePtr& node, const Ids& ids, bool wholeIslandsOnly)
{
    kyUVUtils::findUVIslands(coreOf(node), node, slot, ids.data(),
                             static_cast<unsigned int>(ids.size()), wholeIslandsOnly,
                             found.triangles, found.triangleCounts, found.vertices,
                             found.vertexCounts);
}

Found find(const osg::NodePtr& node, const Ids& ids = {}, bool wholeIslandsOnly = false)
{
    Found found;
    findInto(found, node, ids, wholeIslandsOnly);
    return found;
}

TEST(FindUVIslands, TakesTheIslandsThatIdsLieInAndWholeOnesWhereAsked)
{
    // Islands 0 to 3 with the vertices 4k to 4k + 3, and vertex 16 in none.
    const osg::RefPtr<osg::Node> node(nodeOf(quadsApart(4)));
    coreOf(node)->getPositions()->addValue(osg::Pnt3f(9, 9, 9));
    struct Case
    {
        const char* name;
        Ids ids;
        bool wholeIslandsOnly;
        Ids islands;
    };
    const Case cases[] = {
        {"no ids", {}, false, {0, 1, 2, 3}},
        {"no ids, whole", {}, true, {0, 1, 2, 3}},
        {"one id", {9}, false, {2}},
        {"two ids of an island", {9, 8}, false, {2}},
        {"islands come in their order", {13, 5}, false, {1, 3}},
        {"an id in no island asks for the first", {16, 13}, false, {0, 3}},
        {"so does one that isn't there", {99}, false, {0}},
        {"all of one and not quite all of another", {8, 9, 10, 11, 12, 13, 15}, true, {2}},
        {"in any order", {7, 4, 6, 5}, true, {1}},
        {"one vertex thrice is no cover", {4, 4, 4}, true, {}},
    };
    for (const bool useCompactMesh : {false, true}) {
        kyUVUtils::setUseCompactMesh(useCompactMesh);
        for (const Case& c : cases) {
            SCOPED_TRACE(c.name + std::string(useCompactMesh ? " (compact mesh)" : ""));
            const Found found = find(node, c.ids, c.wholeIslandsOnly);
            EXPECT_EQ(found.triangleCounts, Ids(c.islands.size(), 6));
            Ids islands;
            for (const Ids& vertices : found.vertexLists()) {
                EXPECT_EQ(vertices.size(), 4U);
                islands.push_back(vertices.at(0) / 4);
            }
            EXPECT_EQ(islands, c.islands);
        }
    }
    kyUVUtils::setUseCompactMesh(true);
}

/// Ids of one compact vertex are one, so only without a mesh a repeat makes a cover too long.
TEST(FindUVIslands, CountsARepeatedIdTwiceWithoutAMesh)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quadsApart(2)));
    const Ids ids{4, 4, 5, 6, 7};
    EXPECT_EQ(find(node, ids, true).vertexCounts, Ids{4});
    const WithoutCompactMesh scope;
    EXPECT_EQ(find(node, ids, true), Found());
    EXPECT_EQ(find(node, ids).vertexCounts, Ids{4});
}

TEST(FindUVIslands, AppendsAndLeavesWhatWasThere)
{
    const osg::RefPtr<osg::Node> node(nodeOf(quadsApart(2)));
    const Found first = find(node, {0});
    const Found second = find(node, {4});
    Found found = first;
    findInto(found, node, {4}, false);
    EXPECT_EQ(found.triangleLists(), (std::vector<Ids>{first.triangles, second.triangles}));
    EXPECT_EQ(found.vertexLists(), (std::vector<Ids>{first.vertices, second.vertices}));
}

TEST(FindUVIslands, FindsNothingWhereNothingIs)
{
    const osg::RefPtr<osg::Node> empty(nodeOf(geometryOf({osg::Pnt3f(0, 0, 0)}, {})));
    const osg::RefPtr<osg::Node> broken(nodeOf(brokenQuad()));
    const osg::RefPtr<osg::Node> hidden(shellOf({quad()}));
    hidden->getChild(0)->setTravMask(0);
    for (const bool useCompactMesh : {false, true}) {
        kyUVUtils::setUseCompactMesh(useCompactMesh);
        for (const osg::NodePtr node : {empty.get(), broken.get(), hidden.get()}) {
            EXPECT_EQ(find(node, {0}), Found());
            EXPECT_EQ(find(node, {0}, true), Found());
            EXPECT_TRUE(kyUVUtils::getAllIslandSeeds(coreOf(node), node, slot).empty());
            EXPECT_TRUE(kyUVUtils::getAllEdges(coreOf(node), node, slot).empty());
        }
    }
    kyUVUtils::setUseCompactMesh(true);
    EXPECT_TRUE(kyUVUtils::getAllVertices(coreOf(broken), broken).empty());
    EXPECT_TRUE(kyUVUtils::getAllVertices(coreOf(hidden), hidden).empty());
}

Ids toCompact(const CompactShellMesh& mesh, Ids ids)
{
    for (unsigned int& id : ids)
        id = mesh.mapVertFToC(id);
    return ids;
}

using Triangle = std::array<unsigned int, 3>;

/// The triangles of a list, each from its lowest vertex on, sorted.
std::vector<Triangle> sortedTriangles(const Ids& ids)
{
    std::vector<Triangle> triangles;
    for (std::size_t i = 0; i < ids.size(); i += 3) {
        Triangle triangle{ids[i], ids[i + 1], ids[i + 2]};
        std::sort(triangle.begin(), triangle.end());
        triangles.push_back(triangle);
    }
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}

RC_GTEST_PROP(FindUVIslands, ThroughAMeshFindsItsConnectedPartsInIdsOfTheNode, ())
{
    const osg::RefPtr<osg::Node> node = randomNode();
    const Found found = find(node);
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(coreOf(node), node, slot);
    RC_ASSERT(mesh);

    const std::vector<Ids> islands =
        verticesBySpreading(mesh->getGeomPtr()->getIndices()->getValues(),
                            mesh->getGeomPtr()->getPositions()->getSize());
    const std::vector<Ids> vertices = found.vertexLists();
    const std::vector<Ids> triangles = found.triangleLists();
    RC_ASSERT(vertices.size() == islands.size());
    const std::vector<Triangle> all = sortedTriangles(trianglesOf(node));
    for (std::size_t i = 0; i < islands.size(); ++i) {
        RC_ASSERT(toCompact(*mesh, vertices[i]) == islands[i]);
        for (const unsigned int vertex : toCompact(*mesh, triangles[i]))
            RC_ASSERT(std::binary_search(islands[i].begin(), islands[i].end(), vertex));
        for (const Triangle& triangle : sortedTriangles(triangles[i]))
            RC_ASSERT(std::binary_search(all.begin(), all.end(), triangle));
    }
    RC_ASSERT(sortedTriangles(toCompact(*mesh, found.triangles)) ==
              sortedTriangles(toCompact(*mesh, trianglesOf(node))));
}

/// The search takes its triangles back in about the order of the mesh. Whatever the order, and with
/// what is no triangle in between, a triangle gives what it gives by itself.
RC_GTEST_PROP(FindUVIslands, GetsEachTriangleBackWhateverStandsBeforeIt, ())
{
    const osg::RefPtr<osg::Node> node = randomNode();
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(coreOf(node), node, slot);
    const Ids triangles = mesh->getGeomPtr()->getIndices()->getValues();
    const auto triangleCount = static_cast<unsigned int>(triangles.size() / 3);
    const auto places = *rc::gen::container<Ids>(rc::gen::inRange(0U, triangleCount));
    Ids asked;
    Ids expected;
    for (const unsigned int place : places) {
        const auto first = triangles.begin() + 3 * static_cast<long>(place);
        asked.insert(asked.end(), first, first + 3);
        if (place % 5 == 0)
            asked.back() = triangles[3 * (place / 2)];
        mesh->mapSMeshCToF(asked.data() + asked.size() - 3, 3, expected);
    }
    Ids found;
    mesh->mapSMeshCToF(asked.data(), static_cast<unsigned int>(asked.size()), found);
    RC_ASSERT(found == expected);
}

RC_GTEST_PROP(FindUVIslands, ComesBackFromItsOwnIds, ())
{
    const osg::RefPtr<osg::Node> node = randomNode();
    const Found all = find(node);
    const std::vector<Ids> vertices = all.vertexLists();
    const Ids seeds = kyUVUtils::getAllIslandSeeds(coreOf(node), node, slot);
    RC_ASSERT(seeds.size() == vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        RC_ASSERT(seeds[i] == *std::min_element(vertices[i].begin(), vertices[i].end()));
        const Found one = find(node, {seeds[i]});
        RC_ASSERT(one.vertices == vertices[i]);
        RC_ASSERT(one.triangles == all.triangleLists()[i]);
        RC_ASSERT(find(node, vertices[i], true) == one);
        // Corners name vertices on every side of a welded border: more ids, but the same vertices.
        RC_ASSERT(find(node, one.triangles, false) == one);
        RC_ASSERT(
            find(node, Ids(vertices[i].begin() + 1, vertices[i].end()), true).vertexCounts.size() ==
            (vertices[i].size() > 1 ? 0 : vertices.size()));
    }
}

RC_GTEST_PROP(FindUVIslands, WithoutAMeshLooksAtIndicesAlone, ())
{
    const WithoutCompactMesh scope;
    const osg::RefPtr<osg::Node> node = randomPlain(*rc::gen::arbitrary<std::uint32_t>(), slot);
    const Ids indices = coreOf(node)->getIndices()->getValues();
    const Found found = find(node);
    const std::vector<Ids> islands =
        verticesBySpreading(indices, coreOf(node)->getPositions()->getSize());
    RC_ASSERT(found.vertexLists() == islands);
    for (std::size_t island = 0; island < islands.size(); ++island) {
        const Ids& vertices = islands[island];
        Ids expected;
        for (auto corner = indices.begin(); corner != indices.end(); corner += 3)
            if (std::binary_search(vertices.begin(), vertices.end(), *corner))
                expected.insert(expected.end(), corner, corner + 3);
        RC_ASSERT(found.triangleLists()[island] == expected);
    }
}

} // namespace
