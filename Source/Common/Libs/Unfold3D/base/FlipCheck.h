#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The triangles of a layout ([vertex]) that don't turn counter-clockwise by an exact test, those
/// without area and those with a corner that isn't finite included; ascending.
std::vector<int> flippedTriangles(std::span<const Triangle> triangles, std::span<const Vec2> uv);

/// Whether there are none.
bool isFlipFree(std::span<const Triangle> triangles, std::span<const Vec2> uv);

} // namespace unfold3d
