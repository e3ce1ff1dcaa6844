#include "Unfold3D/seams/MeshParts.h"

#include "Unfold3D/seams/SurfaceExtent.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

/// In sizes of the whole mesh: what a part without extent is taken for.
constexpr double leastSize = 1e-9;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

MeshParts findParts(const SeamMesh& mesh, std::span<const char> isSeam)
{
    Patches patches = findPatches(mesh, isSeam);
    MeshParts parts;
    parts.ofVertex.assign(mesh.positions.size(), 0);
    parts.areas = std::move(patches.areas);
    for (double& area : parts.areas)
        area = std::max(area, leastSize * leastSize);
    for (int patch = 0; patch < patches.count(); ++patch) {
        const std::span<const int> triangles = patches.triangles[patch];
        for (const int t : triangles)
            for (const int v : mesh.triangles[at(t)])
                parts.ofVertex[at(v)] = patch;
        parts.sizes.push_back(
            std::max(extentOf(mesh.positions, mesh.triangles, triangles).size, leastSize));
    }
    parts.ofTriangle = std::move(patches.ofTriangle);
    return parts;
}

} // namespace unfold3d
