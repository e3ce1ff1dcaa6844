#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <span>
#include <vector>

/// Exact tests of a layout, plain and slow, that share nothing with the engine but the orientation
/// of three points.
namespace layout
{

/// Triangles that don't turn counter-clockwise.
int countFlips(const std::vector<unfold3d::Triangle>& triangles,
               std::span<const unfold3d::Vec2> uv);

/// Pairs of border edges without a common vertex that meet. Every pair is looked at.
int countCrossings(const std::vector<unfold3d::Triangle>& triangles,
                   std::span<const unfold3d::Vec2> uv);

/// Pairs of triangles, none of them flipped, that cover a place together. Every pair is looked at.
int countOverlaps(const std::vector<unfold3d::Triangle>& triangles,
                  std::span<const unfold3d::Vec2> uv);

/// Area of the triangles in space.
double areaOf(const unfold3d::IslandMesh& mesh);

} // namespace layout
