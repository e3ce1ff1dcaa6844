#include "UVUtils/editing/IslandLabels.h"

#include "UVUtils/editing/IslandReference.h"
#include "UVUtils/editing/kyUVSelection.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace
{

using tiny::Ids;
constexpr unsigned int none = 0xFFFFFFFFU;

TEST(IslandLabels, FollowSharedVerticesAndTheOrderOfTheTriangles)
{
    struct Case
    {
        const char* name;
        Ids triangles;
        unsigned int vertexCount;
        Ids islands;
    };
    const Case cases[] = {
        {"vertices without triangles", {}, 2, {none, none}},
        {"one triangle and a vertex beside it", {0, 1, 3}, 4, {0, 0, none, 0}},
        {"the first triangle is island 0, not the first vertex",
         {3, 4, 5, 0, 1, 2},
         6,
         {1, 1, 1, 0, 0, 0}},
        {"two that a third one joins later",
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 5, 9, 2},
         10,
         {0, 0, 0, 0, 0, 0, 1, 1, 1, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const IslandLabels labels = labelIslands(c.triangles, c.vertexCount);
        EXPECT_EQ(labels.islandOfVertex, c.islands);
    }
}

/// Every triangle is an island at first, and each of the later ones joins two neighbours from the
/// end to the beginning: the longest chains of labels that can be.
TEST(IslandLabels, GrowTogetherFromTheEndInReasonableTime)
{
    constexpr unsigned int count = 100000;
    Ids triangles;
    for (unsigned int i = 0; i < count; ++i)
        triangles.insert(triangles.end(), {i, count + i, 2 * count + i});
    for (unsigned int i = count - 1; i > 0; --i)
        triangles.insert(triangles.end(), {i, i - 1, count + i});
    for (unsigned int i = 0; i < count; ++i)
        triangles.insert(triangles.end(), {count + i, 2 * count + i, 3 * count + i});
    const IslandLabels labels = labelIslands(triangles, 4 * count);
    EXPECT_EQ(labels.islandCount, 1U);
    EXPECT_EQ(labels.islandOfVertex, Ids(4 * std::size_t{count}, 0));
}

RC_GTEST_PROP(IslandLabels, AreThoseOfTheReferenceOnRandomTriangles, ())
{
    const auto vertexCount = *rc::gen::inRange(1U, 60U);
    const Ids triangles = *rc::gen::container<Ids>(rc::gen::inRange(0U, vertexCount));
    const IslandLabels labels = labelIslands(triangles, vertexCount);
    RC_ASSERT(labels.islandOfVertex == islandsBySpreading(triangles, vertexCount));

    RC_ASSERT(verticesOfIslands(labels) == verticesBySpreading(triangles, vertexCount));
}

TEST(IslandSeeds, AreTheLowestVerticesWhateverTheOrder)
{
    EXPECT_EQ(kyUVSelection::getIslandsSeeds({}, {}), Ids());
    EXPECT_EQ(kyUVSelection::getIslandsSeeds({3, 2, 0}, {7, 4, 9, 8, 6}), (Ids{4, 6, none}));
}

} // namespace
