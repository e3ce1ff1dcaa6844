#include "uvtool/LayoutBuilders.h"

#include "layout/OpenEdges.h"
#include "picture/IslandOutlines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace uvtool;
using test::TestLayout;

IslandOutlines outlinesOf(const TestLayout& layout, std::size_t islandCount)
{
    return chainOutlines(layout, layout.islands, openEdges(layout, layout.islands), islandCount);
}

/// The square ring 0 1 2 3 around the hole 4 5 6 7:
///   3-------2
///   | 7---6 |
///   | 4---5 |
///   0-------1
TestLayout ring()
{
    TestLayout layout;
    layout.uvs = {{0, 0}, {3, 0}, {3, 3}, {0, 3}, {1, 1}, {2, 1}, {2, 2}, {1, 2}};
    for (std::uint32_t i = 0; i < 4; ++i) {
        const std::uint32_t next = (i + 1) % 4;
        layout.addTriangle(0, i, next, 4 + next);
        layout.addTriangle(0, i, 4 + next, 4 + i);
    }
    return layout;
}

TEST(IslandOutlines, RingHasTwoLoopsWithTheTrianglesOnTheirLeft)
{
    const IslandOutlines outlines = outlinesOf(ring(), 1);
    ASSERT_THAT(outlines.islandOffsets, testing::ElementsAre(0U, 2U));
    EXPECT_THAT(outlines.loop(0), testing::ElementsAre(0U, 1U, 2U, 3U));
    EXPECT_THAT(outlines.loop(1), testing::ElementsAre(5U, 4U, 7U, 6U));
}

TEST(IslandOutlines, EveryOpenEdgeIsWalkedOnce)
{
    // Two rings that touch in UV 2, an island without a border, and three triangles at one edge.
    TestLayout layout = ring();
    const TestLayout second = ring();
    layout.uvs.insert(layout.uvs.end(), second.uvs.begin(), second.uvs.end());
    for (std::size_t i = 0; i < second.corners.size(); i += 3) {
        const auto uv = [&](std::size_t k) {
            return second.corners[i + k] == 0 ? 2 : 8 + second.corners[i + k];
        };
        layout.addTriangle(0, uv(0), uv(1), uv(2));
    }
    layout.addTriangle(1, 0, 1, 2);
    layout.addTriangle(1, 0, 2, 1);
    for (const std::uint32_t tip : {3U, 4U, 5U})
        layout.addTriangle(2, 0, 1, tip);

    const std::vector<TriangleEdge> open = openEdges(layout, layout.islands);
    const IslandOutlines outlines = outlinesOf(layout, 3);
    EXPECT_EQ(outlines.uvs.size(), open.size());
    EXPECT_EQ(outlines.islandOffsets[1], outlines.islandOffsets[2]);

    std::vector<std::pair<std::uint32_t, std::uint32_t>> walked;
    for (std::size_t l = 0; l + 1 < outlines.loopOffsets.size(); ++l) {
        const auto loop = outlines.loop(l);
        for (std::size_t i = 0; i < loop.size(); ++i)
            walked.emplace_back(loop[i], loop[(i + 1) % loop.size()]);
    }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> expected;
    expected.reserve(open.size());
    for (const TriangleEdge& edge : open)
        expected.emplace_back(layout.corners[3 * edge.triangle + edge.corner],
                              layout.corners[3 * edge.triangle + edge.nextCorner()]);
    EXPECT_THAT(walked, testing::UnorderedElementsAreArray(expected));
}

} // namespace
