#pragma once

#include "layout/DocumentLayout.h"
#include "layout/UVBox.h"

#include <cstddef>
#include <span>

namespace uvtool
{

/// What a layout measures. Sums that can be added.
struct LayoutMeasures
{
    UVBox bounds;
    double area = 0.0;       ///< in the UV plane
    double sceneArea = 0.0;  ///< of the same triangles
    std::size_t flipped = 0; ///< triangles, as the check counts them

    /// Lengths in UV for a length of 1 in the scene, as a mean over the surface; times the width of
    /// an image its texels. 0 of nothing.
    double texelDensity() const;

    LayoutMeasures& operator+=(const LayoutMeasures& other);
};

/// positions  [3 * triangleCount] where the corners of the triangles lie in the scene
///
/// Counts no flipped triangles.
LayoutMeasures measureLayout(const UVLayout& layout, std::span<const Vec3d> positions);

/// What an edit did to a geometry: to the islands that it was to change.
struct EditReport
{
    LayoutMeasures before;
    LayoutMeasures after;
    std::size_t islands = 0;
    std::size_t islandsMoved = 0; ///< of which a UV has changed
};

} // namespace uvtool
