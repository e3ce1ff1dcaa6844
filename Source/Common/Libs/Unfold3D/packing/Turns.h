#pragma once

#include "Unfold3D/base/Vec.h"
#include "Unfold3D/packing/PackOptions.h"

#include <vector>

namespace unfold3d
{

// A turn is a vector of length 1: the angle that it makes with the u axis is the angle of the turn,
// and turned() in Turned.h applies it.

/// How an island with that convex hull is turned first. The lesser of two turns that do the same.
Vec2 preRotationOf(PreRotation mode, const std::vector<Vec2>& hull);

/// The turns that are tried after that, at least one. Multiples of 90 degrees are exact. Limits in
/// the wrong order are swapped and what repeats after a full turn is left out. Of more than
/// `maxTurns` steps only as many are taken, evenly.
std::vector<Vec2> turnsToTry(double step, double min, double max);

inline constexpr int maxTurns = 72;

} // namespace unfold3d
