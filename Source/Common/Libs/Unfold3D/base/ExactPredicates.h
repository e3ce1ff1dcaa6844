#pragma once

#include "Unfold3D/base/Vec.h"

namespace unfold3d
{

/// The side of the line a b on which c lies: +1 left (a b c turns counter-clockwise), -1 right, 0
/// exactly on the line. Exact for all finite coordinates whose products neither overflow nor fall
/// below the normal numbers (magnitudes between 1e-140 and 1e140, and zero).
///
/// A handful of operations where the plain determinant is safe from rounding, else about a
/// hundred.
int orient2d(Vec2 a, Vec2 b, Vec2 c);

} // namespace unfold3d
