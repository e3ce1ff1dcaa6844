#pragma once

#include "layout/UVLayout.h"

#include <cmath>
#include <cstddef>

namespace uvtool
{

/// True when no corner of the triangle has a NaN or an infinity.
inline bool isFinite(const UVLayout& layout, std::size_t triangle)
{
    for (std::size_t corner = 0; corner < 3; ++corner)
        for (const float coordinate : layout.point(triangle, corner))
            if (!std::isfinite(coordinate))
                return false;
    return true;
}

/// Area of a triangle, positive when it turns counter-clockwise; rounded, so that its sign may be
/// off for a sliver.
inline double signedArea(const UVLayout& layout, std::size_t triangle)
{
    const auto& a = layout.point(triangle, 0);
    const auto& b = layout.point(triangle, 1);
    const auto& c = layout.point(triangle, 2);
    return ((double(b[0]) - a[0]) * (double(c[1]) - a[1]) -
            (double(b[1]) - a[1]) * (double(c[0]) - a[0])) /
           2;
}

} // namespace uvtool
