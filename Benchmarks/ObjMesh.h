#pragma once

#include "PatchMeshes.h"

#include <filesystem>

namespace bench
{

/// The positions and triangles of a plain OBJ; polygons become fans, UVs begin at 0. Throws
/// std::runtime_error when there is no such file.
FlatMesh readObj(const std::filesystem::path& file);

/// Each triangle becomes four, by the middles of its edges.
FlatMesh splitInFour(const FlatMesh& mesh);

/// Symmetric Dirichlet energy of a layout [3 for each vertex] at its best scale, mean over the area
/// in space; 4 is isometric. Infinite with a flipped triangle.
double symmetricDirichlet(const FlatMesh& mesh, const std::vector<double>& uvw);

} // namespace bench
