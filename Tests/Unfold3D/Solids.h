#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <utility>
#include <vector>

/// Closed surfaces for the tests of seams, wound counter-clockwise seen from outside, and hostile
/// ones.
namespace solids
{

using unfold3d::IslandMesh;

/// The surface of unit cubes that fill the cells (i, j, k) below the counts for which isFull; two
/// triangles for each square.
IslandMesh cubes(int countX, int countY, int countZ, bool (*isFull)(int i, int j, int k));
IslandMesh box(int countX, int countY, int countZ);

/// What a line of points (radius, height) sweeps around the z axis. It begins and ends on the axis,
/// where it gets a tip.
IslandMesh turned(const std::vector<std::pair<double, double>>& line, int sides);
IslandMesh sphere(int sides);
IslandMesh cylinder(int sides, int rings);

/// A box of side 2 whose edges and corners are rounded by a radius below 1; `steps` squares along
/// each rounding and each flat.
IslandMesh roundedBox(double radius, int steps);

/// Triangles at random: edges of many of them, copies, bad corners, many parts, needles, triangles
/// on one point.
IslandMesh soup(unsigned seed);

} // namespace solids
