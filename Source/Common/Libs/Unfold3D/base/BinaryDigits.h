#pragma once

#include <cmath>

namespace unfold3d
{

/// A number rounded to so many binary digits, the first one counted: off by at most 2^-digits of
/// it. What differs by rounding errors only comes out the same, but for the rare pair on either
/// side of a half step.
inline double toBinaryDigits(double value, int digits)
{
    int exponent = 0;
    const double mantissa = std::frexp(value, &exponent);
    return std::ldexp(std::round(std::ldexp(mantissa, digits)), exponent - digits);
}

} // namespace unfold3d
