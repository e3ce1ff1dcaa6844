#include "uvtool/LayoutBuilders.h"

#include "picture/CoverageRaster.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace
{

using namespace uvtool;
using test::TestLayout;

constexpr RasterFrame hundred{0, 1, 100, 100, 100};

CoverageRaster rasterOf(const TestLayout& layout, const RasterFrame& frame = hundred)
{
    return {frame, layout, layout.islands};
}

std::size_t cellsIn(const std::vector<CellBlock>& blocks)
{
    std::size_t cells = 0;
    for (const CellBlock& block : blocks)
        cells +=
            static_cast<std::size_t>((block.rowEnd - block.row) * (block.columnEnd - block.column));
    return cells;
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
    std::vector<char> isOverlap(10000, 0);
    const auto cellAt = [](std::int32_t row, std::int32_t column) {
        return std::size_t{100} * static_cast<std::size_t>(row) + static_cast<std::size_t>(column);
    };
    for (const CellBlock& block : raster.overlaps())
        for (std::int32_t row = block.row; row < block.rowEnd; ++row)
            for (std::int32_t column = block.column; column < block.columnEnd; ++column)
                isOverlap[cellAt(row, column)] = 1;
    // One cell apart, the strokes run through every overlap exactly once.
    std::size_t cells = 0;
    for (const CellStroke& stroke : raster.overlapHatch(1)) {
        for (std::int32_t i = 0; i < stroke.length; ++i, ++cells)
            EXPECT_EQ(isOverlap[cellAt(stroke.row - i, stroke.column + i)], 1);
    }
    EXPECT_EQ(cells, cellsIn(raster.overlaps()));
    EXPECT_GT(cells, 0U);
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

} // namespace
