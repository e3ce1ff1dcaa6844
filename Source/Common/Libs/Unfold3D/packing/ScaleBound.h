#pragma once

#include "Unfold3D/packing/Piece.h"
#include "Unfold3D/packing/Sheet.h"

#include <vector>

namespace unfold3d
{

/// A scale that no layout of the pieces on the sheet exceeds, whatever its turns and places; 1 for
/// pieces without any extent.
///
/// No piece is larger than its tile in all of its turns. And with half the gap around them, the
/// pieces don't overlap and stay in the tiles with half the gap around these. An island of area A
/// whose convex hull has the perimeter P covers at least A + P r + pi r^2 with r around it: as r
/// grows, its area grows by its perimeter, which is at least that of its hull.
double boundOfScale(const std::vector<Piece>& pieces, const Sheet& sheet);

} // namespace unfold3d
