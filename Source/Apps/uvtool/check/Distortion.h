#pragma once

#include "document/Document.h"
#include "layout/UVLayout.h"

#include <span>

namespace uvtool
{

/// How a layout distorts its surface, as means over the area of the surface. Sums that can be
/// added.
///
/// With s and t the lengths that a unit circle of the surface has along and across where it is
/// drawn out most in UV: each island at the scale that suits it best, so that sizes of islands
/// don't count, and a triangle the same whichever way it turns. Triangles without an area, in UV or
/// in space, are left out.
struct Distortion
{
    double energySum = 0.0;
    double angleSum = 0.0;
    double area = 0.0;

    /// The symmetric Dirichlet energy s^2 + t^2 + 1/s^2 + 1/t^2: 4 without distortion. 0 of
    /// nothing.
    double energy() const { return area > 0.0 ? energySum / area : 0.0; }
    /// (s/t + t/s) / 2: 1 where angles are kept. 0 of nothing.
    double angles() const { return area > 0.0 ? angleSum / area : 0.0; }

    Distortion& operator+=(const Distortion& other)
    {
        energySum += other.energySum;
        angleSum += other.angleSum;
        area += other.area;
        return *this;
    }
};

/// positions  [3 * triangleCount] where the corners of the triangles lie in space
///
/// Values that aren't finite are left out. Linear.
Distortion measureDistortion(const UVLayout& layout, std::span<const Vec3d> positions);

} // namespace uvtool
