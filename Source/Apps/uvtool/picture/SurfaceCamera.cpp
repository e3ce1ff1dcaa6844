#include "picture/SurfaceCamera.h"

#include "document/Box3.h"
#include "document/Vec3Math.h"

#include <algorithm>

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

    Box3<double> seen;
    for (const Vec3d& point : points)
        seen.add(turn(point));
    if (points.empty())
        return;
    for (std::size_t i = 0; i < 3; ++i)
        middle_[i] = 0.5 * seen.lo[i] + 0.5 * seen.hi[i];
    const double extent = std::max(seen.hi[0] - seen.lo[0], seen.hi[1] - seen.lo[1]);
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
