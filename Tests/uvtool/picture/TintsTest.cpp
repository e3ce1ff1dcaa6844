#include "picture/Tints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <set>

namespace
{

using namespace uvtool;
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
