#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/parameterisation/MovablePart.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A few vertices of an island with the triangles at them, as an island of its own.
///
///   mesh      what hangs on the vertices that are to move
///   isFixed   [vertex of mesh] those around them
///   vertices  [vertex of mesh] their numbers in the island, ascending
struct Surroundings
{
    IslandMesh mesh;
    std::vector<char> isFixed;
    std::vector<int> vertices;
};

/// Which vertices of a part can move and are within `rings` edges of those in `centres`: [vertex].
std::vector<char> verticesAround(const MovablePart& part, std::span<const int> centres, int rings);

/// Takes the marked vertices out of their island. Linear in the part.
Surroundings takeSurroundings(const MovablePart& part, std::span<const char> isMarked);

} // namespace unfold3d
