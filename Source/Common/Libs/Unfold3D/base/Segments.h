#pragma once

#include "Unfold3D/base/Vec.h"

namespace unfold3d
{

// Exact tests of segments in the plane. Coordinates as for orient2d.

/// Whether the segments a b and c d have a point in common.
bool doSegmentsMeet(Vec2 a, Vec2 b, Vec2 c, Vec2 d);

/// For two segments from one common point to a and to b: whether the shorter lies on the longer.
bool doSpokesOverlap(Vec2 common, Vec2 a, Vec2 b);

} // namespace unfold3d
