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

/// Normal of a triangle, as long as twice its area.
inline Vec3d areaNormal(const Vec3d& a, const Vec3d& b, const Vec3d& c)
{
    return cross(difference(b, a), difference(c, a));
}

inline double length(const Vec3d& a)
{
    return std::hypot(a[0], a[1], a[2]);
}

/// Of length 1; zero where there is no length.
inline Vec3d normalised(const Vec3d& a)
{
    const double norm = length(a);
    if (norm <= 0.0)
        return {};
    return {a[0] / norm, a[1] / norm, a[2] / norm};
}

} // namespace uvtool
