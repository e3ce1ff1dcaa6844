#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A straight piece of the outline of an island.
///
///      left         `winding` is the number of triangles that cover the left side less those that
///   from ----> to   cover the right one. A plain border has 1 or -1, the crest of a fold 2 or -2,
///      right        an edge of a triangle without area 0. A vertex that no edge reaches stands
///                   here with both ends at one place and winding 0.
struct OutlineEdge
{
    Vec2 from;
    Vec2 to;
    int winding = 0;
};

/// The edges that bound the region which an island covers, folded, overlapping and mirrored
/// triangles included.
///
/// points      [vertex]  UVs
/// triangles   of the whole mesh; `members` are the numbers of those that make up the island
/// vertices    of the island; one that none of the members has becomes a point of its own
///
/// Left out are the edges with as much surface on one side as on the other; around each of them,
/// and around a vertex that has no others, everything is covered. So the boundary of the region is
/// among the edges returned, and the sum of their windings around a point is the number of
/// triangles over it. One sort over the corners.
std::vector<OutlineEdge> islandOutline(std::span<const Vec2> points,
                                       std::span<const Triangle> triangles,
                                       std::span<const int> members, std::span<const int> vertices);

} // namespace unfold3d
