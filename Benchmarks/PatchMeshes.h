#pragma once

#include <vector>

/// Meshes of any size for the benchmarks, in the flat arrays that the engine imports.
namespace bench
{

struct FlatMesh
{
    std::vector<double> coordsXYZ; ///< x, y, z per vertex
    std::vector<double> coordsUVW; ///< u, v, 0 per vertex
    std::vector<int> triangles;    ///< three vertices per triangle

    int triangleCount() const { return static_cast<int>(triangles.size() / 3); }
    int vertexCount() const { return static_cast<int>(coordsXYZ.size() / 3); }
};

/// An open square sheet of about `triangleCount` triangles with hills of several sizes on it: the
/// plain case of an unfold, distorted enough that the solver has something to do. Its UVs are the
/// sheet seen from above.
FlatMesh bumpyPatch(int triangleCount);

/// `islandCount` separate round patches of 8 to 100 triangles, bent like shells, each with UVs of
/// its own: the many-islands case of a pack. The same on every run.
FlatMesh shellPieces(int islandCount);

} // namespace bench
