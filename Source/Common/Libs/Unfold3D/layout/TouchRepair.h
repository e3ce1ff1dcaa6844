#pragma once

#include "Unfold3D/layout/VertexStars.h"

#include <array>
#include <vector>

namespace unfold3d
{

/// The edges of a layout's border, by the vertices at their ends.
using BorderEdges = std::vector<std::array<int, 2>>;

/// Edges that exactly one triangle has.
BorderEdges borderEdges(std::span<const Triangle> triangles, int vertexCount);

/// How many pairs of border edges have a point in common beside a common end, by an exact test.
/// Near linear for a border that is no tangle.
int countTouches(const BorderEdges& border, std::span<const Vec2> uv);

/// Moves vertices by small steps, flipping no triangle, until the border touches itself nowhere any
/// more, where the layout has room. The same on every run.
void repairTouches(const BorderEdges& border, std::span<const Vec2> uv, VertexStars& stars);

} // namespace unfold3d
