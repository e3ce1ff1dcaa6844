#pragma once

#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/Spring.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// How far border points can move along `motion` ([point], like positions) until one meets an edge,
/// as a multiple of `motion`; `most` when none does up to there. All points move evenly on straight
/// lines. To rounding: who must be sure tests the layout after the motion.
double firstContact(const Border& border, std::span<const Vec2> positions,
                    std::span<const Vec2> motion, double most);

/// Adds springs that brake the pairs of points and edges which would meet up to `most` times the
/// motion. They have no slope: a step with them goes downhill all the same, but gets farther before
/// the first contact.
///
/// work  what moving across the whole of a gap shall cost, doubled
void addBrakes(const Border& border, std::span<const Vec2> positions, std::span<const Vec2> motion,
               double most, double work, std::vector<Spring>& springs);

} // namespace unfold3d
