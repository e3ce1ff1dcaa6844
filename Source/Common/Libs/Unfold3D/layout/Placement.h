#pragma once

#include "Unfold3D/base/Box2.h"
#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The box of a layout.
Box2 boxAround(std::span<const Vec2> uv);

/// Turns an island the way a user expects to find it, whatever way it was computed: as its old UVs
/// lay, where they say something about that; else the y axis of space upward, or the z axis when
/// the island hardly extends along y; else the x axis to the right. Never mirrors.
///
/// uv   [vertex]  turned in place, about the origin
/// old  [vertex]  the UVs before; empty when there were none
void turnToExpectedSide(const IslandMesh& mesh, std::span<const Vec2> old, std::vector<Vec2>& uv);

/// Moves an island (uv [vertex], its triangles `triangleCount`) so that the middle of its box is at
/// `middle`; or as near to it on the way from the origin as floats still hold a thousandth of a
/// mean edge.
void moveMiddleTo(Vec2 middle, int triangleCount, std::vector<Vec2>& uv);

/// Lays islands side by side into rows from the origin, so that their boxes don't meet and the
/// whole is about as wide as it is high. Tall ones first; equally tall ones stay in order.
void layInRows(std::span<std::vector<Vec2>* const> islands);

} // namespace unfold3d
