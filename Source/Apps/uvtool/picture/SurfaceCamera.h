#pragma once

#include "document/Document.h"

#include <span>

namespace uvtool
{

/// Looks at points from far away, without perspective. Pixels count from the upper left corner.
class SurfaceCamera
{
public:
    /// from    direction from the middle of the points to the viewer; y is up in the picture
    /// points  all that has to be seen
    /// pixels  side of the square picture that they fill, but for a rim
    SurfaceCamera(const Vec3d& from, std::span<const Vec3d> points, double pixels);

    /// A point in pixels; the third coordinate grows towards the viewer.
    Vec3d project(const Vec3d& point) const;
    /// A direction of the scene as the picture has it: to the right, up and to the viewer.
    Vec3d turn(const Vec3d& direction) const;

private:
    Vec3d right_{};
    Vec3d up_{};
    Vec3d toViewer_{};
    Vec3d middle_{}; ///< as turn() gives it
    double scale_ = 1.0;
    double half_ = 0.0;
};

} // namespace uvtool
