#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <vector>

/// Small surfaces for the tests of the engine. All are wound counter-clockwise seen from outside or
/// above.
namespace surfaces
{

using unfold3d::IslandMesh;
using unfold3d::Triangle;
using unfold3d::Vec3;

/// A sheet of columns x rows squares of side 1, two triangles each, in the plane z = 0; vertex
/// (i, j) has the number i + j (columns + 1).
///
///      6 --- 7 --- 8
///      |  .  |  .  |
///      3 --- 4 --- 5
///      |  .  |  .  |
///      0 --- 1 --- 2
IslandMesh sheet(int columns, int rows);

/// The sheet lifted to hills; `height` about 1 makes them as steep as a roof.
IslandMesh hills(int columns, int rows, double height);

/// A sheet without the triangles of the squares for which isHole(i, j); vertices that nothing uses
/// any more are dropped.
IslandMesh sheetWithHoles(int columns, int rows, bool (*isHole)(int i, int j));

/// A tube around the z axis, open at both ends.
IslandMesh tube(int sides, int rings, double radius, double ringHeight);

/// The tube, closed at its upper end by a fan: a finger.
IslandMesh finger(int sides, int rings, double radius, double ringHeight);

/// A closed surface with four faces.
IslandMesh tetrahedron();

/// A torus; `openSquares` of its squares are left out.
IslandMesh torus(int around, int across, int openSquares);

/// `count` triangles that have vertex 0 in common and nothing else.
IslandMesh blades(int count);

/// A flat strip that winds `turns` times around itself.
IslandMesh spiral(int turns, int squaresPerTurn);

/// A strip of needles: `squares` squares as long as high, split by many points on one long side
/// only.
IslandMesh needleFan(int needles);

/// A cone with `turns` full turns around its tip, cut open along one ray. Rolled out flat it would
/// lie over itself when there is more than one.
///
///   vertex 0 is the tip; ring r = 1, 2, ... has the vertices (r - 1) (sides + 1) + 1 + side
IslandMesh cutCone(double turns, int sides, int rings);

/// Surfaces with borders of all kinds, by name.
struct Named
{
    const char* name;
    IslandMesh mesh;
};
std::vector<Named> openSurfaces();

/// Moved to its first vertex and scaled to the area 1, as the engine solves it.
IslandMesh normalised(IslandMesh mesh);

} // namespace surfaces
