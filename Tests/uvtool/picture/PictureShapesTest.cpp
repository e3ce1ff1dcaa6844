#include "uvtool/LayoutBuilders.h"

#include "layout/OpenEdges.h"
#include "picture/CoverageRaster.h"
#include "picture/IslandOutlines.h"
#include "picture/Tints.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>
#include <set>

namespace
{

using namespace uvtool;
using test::TestLayout;

constexpr RasterFrame hundred{0, 1, 100, 100, 100};

CoverageRaster rasterOf(const TestLayout& layout, const RasterFrame& frame = hundred)
{
    return {frame, layout, layout.islands};
}

/// A fan of triangles around a point, its rim at random distances.
TestLayout randomFan(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> radius(0.1F, 0.45F);
    TestLayout layout;
    layout.uvs.push_back({0.5F, 0.5F});
    const auto count = static_cast<std::uint32_t>(3 + random() % 40);
    for (std::uint32_t i = 0; i < count; ++i) {
        const float angle = 6.2831853F * static_cast<float>(i) / static_cast<float>(count);
        const float r = radius(random);
        layout.uvs.push_back({0.5F + r * std::cos(angle), 0.5F + r * std::sin(angle)});
        layout.addTriangle(static_cast<std::int32_t>(i), 0, 1 + i, 1 + (i + 1) % count);
    }
    return layout;
}

TEST(CoverageRaster, TrianglesAtACommonEdgeDontOverlap)
{
    EXPECT_EQ(rasterOf(test::gridLayout(37)).excess(), 0U);
    for (unsigned seed = 1; seed < 200; ++seed)
        EXPECT_EQ(rasterOf(randomFan(seed)).excess(), 0U) << "seed " << seed;
}

TEST(CoverageRaster, HatchLiesOnOverlapsOnly)
{
    const TestLayout first = randomFan(7);
    TestLayout both = first;
    for (std::size_t i = 0; i < first.corners.size(); i += 3)
        both.addTriangle(0, first.corners[i], first.corners[i + 1], first.corners[i + 2]);
    const CoverageRaster raster = rasterOf(both);
    std::set<std::pair<std::int32_t, std::int32_t>> overlap;
    for (const CellBlock& block : raster.overlaps())
        for (std::int32_t row = block.row; row < block.rowEnd; ++row)
            for (std::int32_t column = block.column; column < block.columnEnd; ++column)
                EXPECT_TRUE(overlap.emplace(row, column).second);
    EXPECT_FALSE(overlap.empty());
    // One cell apart, the strokes run through every overlap exactly once.
    for (const CellStroke& stroke : raster.overlapHatch(1))
        for (std::int32_t i = 0; i < stroke.length; ++i)
            EXPECT_EQ(overlap.erase({stroke.row - i, stroke.column + i}), 1U);
    EXPECT_TRUE(overlap.empty());
}

TEST(CoverageRaster, NeighboursLieWithinReachWithNothingBetween)
{
    TestLayout layout;
    layout.addRectangle(0, {0.1F, 0.1F}, {0.2F, 0.9F});
    layout.addRectangle(1, {0.25F, 0.1F}, {0.35F, 0.9F});
    layout.addRectangle(2, {0.36F, 0.1F}, {0.4F, 0.9F});
    layout.addRectangle(3, {0.8F, 0.1F}, {0.9F, 0.9F});
    using testing::ElementsAre;
    using testing::Pair;
    EXPECT_THAT(rasterOf(layout).neighbours(10), ElementsAre(Pair(0U, 1U), Pair(1U, 2U)));
    EXPECT_THAT(rasterOf(layout).neighbours(3), ElementsAre(Pair(1U, 2U)));
}

TEST(CoverageRaster, WhatLiesOutsideIsCutOff)
{
    TestLayout layout;
    layout.addRectangle(0, {-1e30F, -1e30F}, {1e30F, 1e30F});
    layout.addRectangle(1, {2, 2}, {3, 3});
    const CoverageRaster raster = rasterOf(layout);
    EXPECT_EQ(raster.excess(), 0U);
    EXPECT_TRUE(raster.neighbours(100).empty());
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

TEST(IslandOutlines, EveryOpenEdgeIsWalkedOnceWithItsTriangleOnTheLeft)
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
    const IslandOutlines outlines = chainOutlines(layout, layout.islands, open, 3);
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

using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

/// Two colours this far apart in Oklab are told apart at a glance.
constexpr double clearDistance = 0.08;

std::vector<std::uint32_t> inOrder(std::size_t count)
{
    std::vector<std::uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0U);
    return order;
}

/// The cells of a raster, each a neighbour of the eight around it.
Pairs cellPairs(std::uint32_t n)
{
    Pairs pairs;
    for (std::uint32_t row = 0; row < n; ++row)
        for (std::uint32_t column = 0; column < n; ++column) {
            const std::uint32_t cell = row * n + column;
            if (column + 1 < n)
                pairs.emplace_back(cell, cell + 1);
            if (row + 1 < n)
                pairs.emplace_back(cell, cell + n);
            if (row + 1 < n && column + 1 < n)
                pairs.emplace_back(cell, cell + n + 1);
            if (row + 1 < n && column > 0)
                pairs.emplace_back(cell, cell + n - 1);
        }
    return pairs;
}

TEST(Tints, ConvertToKnownColors)
{
    // Oklab coordinates of the corners of sRGB, as its author published them.
    const struct
    {
        Tint tint;
        std::array<std::uint8_t, 3> rgb;
    } cases[] = {
        {{0, 0, 0}, {0, 0, 0}},
        {{1, 0, 0}, {255, 255, 255}},
        {{0.62796, 0.25768, 29.2339 / 360}, {255, 0, 0}},
        {{0.86644, 0.29483, 142.4953 / 360}, {0, 255, 0}},
        {{0.45201, 0.31321, 264.0520 / 360}, {0, 0, 255}},
    };
    for (const auto& c : cases) {
        const std::array<std::uint8_t, 3> rgb = toRgb(c.tint);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(rgb[k], c.rgb[k], 1);
    }
}

TEST(Tints, NeighboursDifferClearlyAndNoTwoAreTheSame)
{
    const std::uint32_t n = 40;
    const Pairs pairs = cellPairs(n);
    const std::vector<Tint> tints = tintIslands(inOrder(std::size_t{n} * n), pairs);
    for (const auto& [a, b] : pairs)
        EXPECT_GT(distance(tints[a], tints[b]), clearDistance) << a << ' ' << b;
    std::set<double> hues;
    for (const Tint& tint : tints)
        hues.insert(tint.hue);
    EXPECT_EQ(hues.size(), tints.size());
}

} // namespace
