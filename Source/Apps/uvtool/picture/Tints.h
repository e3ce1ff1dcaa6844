#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace uvtool
{

/// A colour by how it is seen: polar coordinates of the Oklab space (B. Ottosson, 2020), in which
/// equal distances look equally far apart.
struct Tint
{
    double lightness; ///< 0 black to 1 white
    double chroma;    ///< 0 grey to about 0.3
    double hue;       ///< in turns, from 0 to 1
};

/// Red, green and blue from 0 to 255. A colour that the screen cannot show loses chroma until it
/// can.
std::array<std::uint8_t, 3> toRgb(const Tint& tint);

/// The distance of two tints as it is seen.
double distance(const Tint& a, const Tint& b);

/// The tint with this number out of an endless series, any stretch of which is spread evenly over
/// the hues. They share a narrow band of lightness, so that none looks more important.
Tint seriesTint(std::size_t number);

/// A tint for each island, no two the same, such that neighbours differ clearly.
///
/// order       [islandCount]  the islands, most important first: they choose first
/// neighbours                 pairs of islands, in any order, each pair once
///
/// Linear in islands and pairs.
std::vector<Tint> tintIslands(std::span<const std::uint32_t> order,
                              std::span<const std::pair<std::uint32_t, std::uint32_t>> neighbours);

} // namespace uvtool
