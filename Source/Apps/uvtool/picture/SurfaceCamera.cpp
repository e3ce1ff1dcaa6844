#include "picture/SurfaceCamera.h"

#include "document/Vec3Math.h"

#include <algorithm>
#include <limits>

namespace uvtool
{
namespace
{

/// Share of the picture that stays free on each side.
constexpr double rim = 0.04;

} // namespace

SurfaceCamera::SurfaceCamera(const Vec3d& from, std::span<const Vec3d> points, double pixels)
    : toViewer_(normalised(from)), half_(0.5 * pixels)
{
    right_ = normalised(cross({0.0, 1.0, 0.0}, toViewer_));
    up_ = cross(toViewer_, right_);

    constexpr double far = std::numeric_limits<double>::max();
    Vec3d lowest{far, far, far};
    Vec3d highest{-far, -far, -far};
    for (const Vec3d& point : points) {
        const Vec3d seen = turn(point);
        for (std::size_t i = 0; i < 3; ++i) {
            lowest[i] = std::min(lowest[i], seen[i]);
            highest[i] = std::max(highest[i], seen[i]);
        }
    }
    if (points.empty())
        return;
    for (std::size_t i = 0; i < 3; ++i)
        middle_[i] = 0.5 * lowest[i] + 0.5 * highest[i];
    const double extent = std::max(highest[0] - lowest[0], highest[1] - lowest[1]);
    if (extent > 0.0)
        scale_ = (1.0 - 2.0 * rim) * pixels / extent;
}

Vec3d SurfaceCamera::turn(const Vec3d& direction) const
{
    return {dot(right_, direction), dot(up_, direction), dot(toViewer_, direction)};
}

Vec3d SurfaceCamera::project(const Vec3d& point) const
{
    const Vec3d seen = turn(point);
    return {half_ + scale_ * (seen[0] - middle_[0]), half_ - scale_ * (seen[1] - middle_[1]),
            scale_ * (seen[2] - middle_[2])};
}

} // namespace uvtool
