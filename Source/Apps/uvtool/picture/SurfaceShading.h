#pragma once

#include "picture/DepthRaster.h"
#include "picture/SurfaceMesh.h"

#include <array>
#include <cstdint>
#include <vector>

namespace uvtool
{

using Rgb = std::array<double, 3>; ///< 0 to 1, as the screen takes them

/// The colours of a surface: a checker that its layout draws on it, in the tints of its islands,
/// under a light.
class SurfaceShading
{
public:
    /// The squares of the checker are equal squares of the layout, and so many fit along the
    /// diagonal of the mesh where the layout has its mean scale.
    SurfaceShading(const SurfaceMesh& mesh, double squaresAlongDiagonal);

    /// light  direction to it, of length 1. Surfaces are lit from both sides
    Rgb colour(const DepthRaster::Hit& hit, const Vec3d& light) const;

private:
    Rgb paint(const DepthRaster::Hit& hit) const;
    Vec3d normal(const DepthRaster::Hit& hit) const;

    const SurfaceMesh& mesh_;
    std::vector<Vec3d> faceNormals_;        ///< [triangle] of length 1, or zero
    std::vector<Vec3d> pointNormals_;       ///< [point] means by area
    std::vector<std::array<Rgb, 2>> tints_; ///< [island] of the two kinds of squares
    double squaresPerUnit_ = 1.0;
};

} // namespace uvtool
