#pragma once

#include "Unfold3D/base/IslandMesh.h"

namespace unfold3d
{

/// The shape that a triangle should have in the plane: corner 0 at the origin, corner 1 on the
/// positive x axis, corner 2 above it.
///
///            (cx, cy)
///              2
///            .   .
///          .       .
///         0---------1 (bx, 0)        bx > 0, cy > 0
struct RestTriangle
{
    double bx = 0.0;
    double cx = 0.0;
    double cy = 0.0;

    double area() const { return 0.5 * bx * cy; }
};

/// Share of its longest edge below which the height of a rest triangle is not taken serious.
///
/// A needle or a cap of height h resists a change of that height with a stiffness of edge / h.
/// Below this share that number spoils the conditioning of a solve and the height is lost when the
/// UVs are rounded to floats, so the triangle gets a rest shape of this height instead: a stand-in,
/// which still can't flip, and whose small area hardly shapes the result.
inline constexpr double minRestHeight = 1e-4;

/// Share of the island's mean edge below which the longest edge of a rest triangle is taken as this
/// long: for triangles whose corners coincide in space.
inline constexpr double minRestEdge = 1e-4;

/// The rest shape of triangle `t` of an island: its shape in space, or its stand-in where it has
/// next to no height. Every stage that measures a triangle asks for it here.
RestTriangle restTriangle(const IslandMesh& mesh, int t);

/// The same for three corners in space; `meanEdge` is the scale for minRestEdge.
RestTriangle restTriangle(Vec3 a, Vec3 b, Vec3 c, double meanEdge);

} // namespace unfold3d
