#pragma once

#include "Unfold3D/base/BoxPairs.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/Spring.h"

#include <span>

namespace unfold3d
{

/// A point of the border seen from an edge that it is no end of.
struct BorderGap
{
    int point;
    int edge;
    double share; ///< where on the edge the place nearest to the point is, 0 to 1
    Vec2 normal;  ///< unit vector from there to the point
    double distance;

    /// Whether the gap lies outside the surface, as far as the surface at its edge can tell.
    bool isOutside(const Border& border, std::span<const Vec2> positions) const;

    /// A spring on the distance, between vertices of the island.
    Spring spring(const Border& border, double slope, double curvature) const;
};

/// positions  [point] in all of these
BorderGap gapBetween(const Border& border, std::span<const Vec2> positions, int point, int edge);

/// Boxes of the edges.
BoxPairs edgeBoxes(const Border& border, std::span<const Vec2> positions);

} // namespace unfold3d
