#pragma once

#include "Unfold3D/parameterisation/Border.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// How often the border meets itself where it should not, by exact tests:
///
///   - edges without a common vertex that share a point;
///   - edges with a common vertex of which one lies on the other;
///   - two fans of triangles at one vertex of which one lies within the other, though their edges
///     only meet in that vertex;
///   - a fan that goes more than once around its vertex. That turns a loop inside out, and when the
///     loop is short, down to three edges, no other edges meet.
///
/// Near linear in the edges for a border that is no tangle.
///
/// positions  [point]  as borderPositions gives them, finite
///
/// A layout without flipped triangles whose border doesn't cross covers no place twice.
int countBorderCrossings(const Border& border, std::span<const Vec2> positions);

/// Edges that have no vertex in common and share a point.
struct EdgePair
{
    int first;
    int second;
};
std::vector<EdgePair> crossingEdges(const Border& border, std::span<const Vec2> positions);

/// Whether there is any; ends with the first.
bool doesBorderCross(const Border& border, std::span<const Vec2> positions);

} // namespace unfold3d
