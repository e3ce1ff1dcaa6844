#pragma once

#include <numbers>

// Angles come and are stored in degrees, in single precision, and are converted in it, in
// this order of steps: what was projected before comes out to the same bits again.

constexpr float PiF = std::numbers::pi_v<float>;
constexpr float TwoPiF = 2 * PiF;

constexpr float radiansFromDegrees(float degrees)
{
    return (degrees + degrees) * PiF / 360.0F;
}

constexpr float degreesFromRadians(float radians)
{
    return radians / TwoPiF * 360.0F;
}
