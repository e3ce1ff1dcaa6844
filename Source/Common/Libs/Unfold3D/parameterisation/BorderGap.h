#pragma once

#include "Unfold3D/base/BoxPairs.h"
#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/Spring.h"

#include <span>
#include <vector>

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
    /// A spring that makes a step keep the gap open, without a slope: the step goes downhill all
    /// the same. Closing the whole gap costs half of `work`.
    Spring brake(const Border& border, double work) const;

    /// Adds the pairs of vertices that its springs join, and those they may join when the point
    /// slides to a neighbouring edge.
    void addPairs(const Border& border, std::vector<NodePair>& pairs) const;
};

/// positions  [point] in all of these
BorderGap gapBetween(const Border& border, std::span<const Vec2> positions, int point, int edge);

/// For each point the least of the gaps outside the surface, where there is one that is narrow:
/// less than a fortieth of the side of a square of area 1, and than a fifth of the way along the
/// border to its edge. Near linear in the points.
std::vector<BorderGap> narrowGaps(const Border& border, std::span<const Vec2> positions);

/// Boxes of the edges.
BoxPairs edgeBoxes(const Border& border, std::span<const Vec2> positions);

} // namespace unfold3d
