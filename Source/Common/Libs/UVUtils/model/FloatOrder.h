#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

/// A number whose order is that of floats, for all floats: -0 and 0 are one, and every NaN is one
/// value that comes after infinity. Comparing by it is a strict weak order where `<` on floats
/// is none, and it is what radix sorts sort by.
inline std::uint32_t orderedBits(float value)
{
    if (std::isnan(value))
        return ~std::uint32_t{0};
    const auto bits = std::bit_cast<std::uint32_t>(value + 0.0F); // -0 becomes 0
    constexpr std::uint32_t sign = std::uint32_t{1} << 31U;
    return (bits & sign) != 0 ? ~bits : bits | sign;
}

/// Do two numbers differ by at most a tolerance? Infinities and NaNs, whose difference is no
/// number, are each within any tolerance of themselves alone.
inline bool isWithin(float a, float b, float tolerance)
{
    const float difference = std::abs(a - b);
    return difference <= tolerance || (std::isnan(difference) && orderedBits(a) == orderedBits(b));
}
