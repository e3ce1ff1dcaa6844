#pragma once

#include <array>

/// Brings the angles of a triangle's corners around a cylinder together, where the triangle lies
/// across the seam at the back, from pi to -pi: the corner that is alone on its side of the seam
/// goes around by 2 pi, beyond the end of the range, so that the triangle stays in one piece.
///
/// Two angles are far apart from pi on. A corner goes down to the others where both of them are
/// below 0, else up. Where no two are far apart nothing happens. A triangle around the axis has no
/// corner alone: of three angles that are all far apart the first one moves, and the last one where
/// only one pair is.
void closeOverSeam(std::array<float, 3>& angles);
