#include "picture/Tints.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace uvtool
{
namespace
{

/// The turn that spreads any number of hues evenly: 1 / golden ratio.
constexpr double goldenTurn = 0.6180339887498949;

/// Lightness goes through this many steps, so that hues that come close again differ in it.
constexpr std::size_t lightnessSteps = 3;
constexpr double middleLightness = 0.80;
constexpr double lightnessStep = 0.055;
constexpr double seriesChroma = 0.105;

/// How many of the tints that are left an island chooses from, at most as many as there are
/// islands: enough that one of them lies far from all neighbours, few enough that the tints used
/// are an even stretch of the series.
constexpr std::size_t mostChoice = 24;

std::array<double, 3> toLab(const Tint& tint)
{
    const double angle = 2 * std::numbers::pi * tint.hue;
    return {tint.lightness, tint.chroma * std::cos(angle), tint.chroma * std::sin(angle)};
}

/// Linear light, which may lie outside 0 to 1.
std::array<double, 3> toLinearRgb(const Tint& tint)
{
    const auto [lightness, a, b] = toLab(tint);
    const double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3);
    const double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3);
    const double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

bool isShown(const std::array<double, 3>& rgb)
{
    constexpr double slack = 1e-4;
    return std::all_of(rgb.begin(), rgb.end(),
                       [](double c) { return c >= -slack && c <= 1 + slack; });
}

/// The transfer curve of sRGB.
double encode(double linear)
{
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

using Pair = std::pair<std::uint32_t, std::uint32_t>;

/// The neighbours of each island: those of island i are [offsets[i], offsets[i + 1]).
struct NeighbourLists
{
    std::vector<std::uint32_t> offsets;
    std::vector<std::uint32_t> neighbours;

    NeighbourLists(std::span<const Pair> pairs, std::size_t islandCount)
        : offsets(islandCount + 1, 0), neighbours(2 * pairs.size())
    {
        for (const auto& [a, b] : pairs) {
            ++offsets[a + 1];
            ++offsets[b + 1];
        }
        for (std::size_t i = 0; i < islandCount; ++i)
            offsets[i + 1] += offsets[i];
        std::vector<std::uint32_t> next(offsets.begin(), offsets.end() - 1);
        for (const auto& [a, b] : pairs) {
            neighbours[next[a]++] = b;
            neighbours[next[b]++] = a;
        }
    }

    std::span<const std::uint32_t> operator[](std::size_t island) const
    {
        return std::span(neighbours)
            .subspan(offsets[island], offsets[island + 1] - offsets[island]);
    }
};

} // namespace

std::array<std::uint8_t, 3> toRgb(const Tint& tint)
{
    Tint shown = tint;
    while (shown.chroma > 0 && !isShown(toLinearRgb(shown)))
        shown.chroma = std::max(0.0, shown.chroma - 0.004);
    std::array<std::uint8_t, 3> bytes{};
    const std::array<double, 3> linear = toLinearRgb(shown);
    std::transform(linear.begin(), linear.end(), bytes.begin(), [](double c) {
        return static_cast<std::uint8_t>(std::lround(255 * encode(std::clamp(c, 0.0, 1.0))));
    });
    return bytes;
}

double distance(const Tint& a, const Tint& b)
{
    const std::array<double, 3> p = toLab(a);
    const std::array<double, 3> q = toLab(b);
    return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
}

Tint seriesTint(std::size_t number)
{
    const double turn = 0.68 + goldenTurn * static_cast<double>(number);
    const double step =
        static_cast<double>(number % lightnessSteps) - static_cast<double>(lightnessSteps - 1) / 2;
    return {middleLightness + lightnessStep * step, seriesChroma, turn - std::floor(turn)};
}

std::vector<Tint> tintIslands(std::span<const std::uint32_t> order, std::span<const Pair> pairs)
{
    const NeighbourLists neighbours(pairs, order.size());
    std::vector<Tint> tints(order.size());
    std::vector<char> isTinted(order.size(), 0);
    std::vector<Tint> left; // the tints to choose from, in order of the series
    std::size_t next = 0;
    const std::size_t choice = std::min(mostChoice, order.size());

    for (const std::uint32_t island : order) {
        while (left.size() < choice)
            left.push_back(seriesTint(next++));
        const auto clearance = [&](const Tint& tint) {
            double least = std::numeric_limits<double>::max();
            for (const std::uint32_t other : neighbours[island]) {
                if (isTinted[other] != 0)
                    least = std::min(least, distance(tint, tints[other]));
            }
            return least;
        };
        const auto best =
            std::max_element(left.begin(), left.end(), [&](const Tint& a, const Tint& b) {
                return clearance(a) < clearance(b);
            });
        tints[island] = *best;
        isTinted[island] = 1;
        left.erase(best);
    }
    return tints;
}

} // namespace uvtool
