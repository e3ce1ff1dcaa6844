#pragma once

#include "document/Document.h"

#include <cmath>

namespace uvtool
{

inline Vec3d difference(const Vec3d& a, const Vec3d& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline double dot(const Vec3d& a, const Vec3d& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Vec3d cross(const Vec3d& a, const Vec3d& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Of length 1; zero where there is no length.
inline Vec3d normalised(const Vec3d& a)
{
    const double length = std::hypot(a[0], a[1], a[2]);
    if (length <= 0.0)
        return {};
    return {a[0] / length, a[1] / length, a[2] / length};
}

} // namespace uvtool
