#pragma once

#include <numbers>

// Stored angles are degrees, and single precision; what is computed from them follows the same
// rounding everywhere, so that an angle that is stored, read and stored again stays the same.

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
