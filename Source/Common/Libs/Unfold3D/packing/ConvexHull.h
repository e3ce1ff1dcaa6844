#pragma once

#include "Unfold3D/base/Vec.h"

#include <vector>

namespace unfold3d
{

/// The corners of the convex hull, counter-clockwise from the lowest of the leftmost points,
/// without points on its sides. Two corners when all points lie on a line, one when they are one.
/// One sort.
std::vector<Vec2> convexHull(std::vector<Vec2> points);

/// The length of the way around; there and back for two corners.
double perimeter(const std::vector<Vec2>& hull);

/// The direction, of length 1, of the longest side; (1, 0) for a single point.
Vec2 longestSide(const std::vector<Vec2>& hull);

/// The direction, of length 1, of the longer side of the box of least area around the hull. One
/// side of that box lies along a side of the hull (Freeman and Shapira 1975). The axes are taken
/// when no other box is smaller by more than rounding. Linear, by rotating calipers.
Vec2 leastBoxDirection(const std::vector<Vec2>& hull);

} // namespace unfold3d
