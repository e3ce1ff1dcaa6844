#include "Unfold3D/packing/Turns.h"

#include "Unfold3D/packing/ConvexHull.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace unfold3d
{

namespace
{

Vec2 turnOf(double degrees)
{
    const double inTurn = std::remainder(degrees, 360.0);
    constexpr std::array<Vec2, 4> quarters{{{1.0, 0.0}, {0.0, 1.0}, {-1.0, 0.0}, {0.0, -1.0}}};
    const double quarter = inTurn / 90.0;
    if (quarter == std::floor(quarter))
        return quarters[static_cast<std::size_t>(quarter + 4.0) % 4];
    const double radians = inTurn * std::numbers::pi / 180.0;
    return {std::cos(radians), std::sin(radians)};
}

/// The turn that brings `direction`, or its opposite, onto the u axis.
Vec2 ontoU(Vec2 direction)
{
    return direction.x < 0.0 ? Vec2{-direction.x, direction.y} : Vec2{direction.x, -direction.y};
}

Vec2 ontoV(Vec2 direction)
{
    return ontoU({direction.y, -direction.x});
}

} // namespace

Vec2 preRotationOf(PreRotation mode, const std::vector<Vec2>& hull)
{
    switch (mode) {
    case PreRotation::None:
        break;
    case PreRotation::LongestSideAlongU:
        return ontoU(longestSide(hull));
    case PreRotation::LongestSideAlongV:
        return ontoV(longestSide(hull));
    case PreRotation::LeastBoxAlongU:
        return ontoU(leastBoxDirection(hull));
    case PreRotation::LeastBoxAlongV:
        return ontoV(leastBoxDirection(hull));
    case PreRotation::LeastBox: {
        const Vec2 direction = leastBoxDirection(hull);
        return std::abs(direction.x) >= std::abs(direction.y) ? ontoU(direction) : ontoV(direction);
    }
    }
    return {1.0, 0.0};
}

std::vector<Vec2> turnsToTry(double step, double min, double max)
{
    constexpr double leastStep = 1e-3; // keeps the number of steps finite
    if (step == 0.0)
        return {{1.0, 0.0}};
    step = std::max(std::abs(step), leastStep);
    if (min > max)
        std::swap(min, max);
    // A little more, so that an end which is a multiple of the step but for rounding counts.
    const double steps = std::floor((max - min) / step + 1e-9);
    const double stepsOfFullTurn = std::ceil(360.0 / step - 1e-9);
    const double count = std::min(steps + 1.0, std::max(1.0, stepsOfFullTurn));
    const int taken = static_cast<int>(std::min<double>(count, maxTurns));
    std::vector<Vec2> turns;
    turns.reserve(static_cast<std::size_t>(taken));
    for (int i = 0; i < taken; ++i)
        turns.push_back(turnOf(min + step * std::floor(i * (count / taken))));
    return turns;
}

} // namespace unfold3d
