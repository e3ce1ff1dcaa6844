#pragma once

#include "Unfold3D/layout/VertexStars.h"

#include <vector>

namespace unfold3d
{

/// Moves vertices by small steps until no triangle is flipped any more, where the layout has room.
/// `flipped` lists those that are. The same on every run.
void repairFlips(std::span<const Triangle> triangles, VertexStars& stars, std::vector<int> flipped);

} // namespace unfold3d
