#pragma once

#include "Unfold3D/parameterisation/Border.h"

namespace unfold3d
{

/// How many pairs of border edges meet where they should not, by an exact test: edges without a
/// common vertex that share a point, and edges with a common vertex of which one lies on the other.
/// Near linear in the edges for a border that is no tangle.
///
/// positions  [point]  as borderPositions gives them, finite
///
/// A layout without flipped triangles whose border doesn't cross covers no place twice.
int countBorderCrossings(const Border& border, std::span<const Vec2> positions);

/// Whether there is any; ends with the first.
bool doesBorderCross(const Border& border, std::span<const Vec2> positions);

} // namespace unfold3d
