#include "Unfold3D/seams/MeshParts.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

/// In diagonals of the whole mesh: what a part without extent is taken for.
constexpr double leastDiagonal = 1e-9;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

struct Box3
{
    Vec3 low;
    Vec3 high;

    void add(Vec3 p)
    {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
};

} // namespace

MeshParts findParts(const SeamMesh& mesh, std::span<const char> isSeam)
{
    Patches patches = findPatches(mesh, isSeam);
    MeshParts parts;
    parts.ofVertex.assign(mesh.positions.size(), 0);
    parts.areas = std::move(patches.areas);
    for (double& area : parts.areas)
        area = std::max(area, leastDiagonal * leastDiagonal);
    for (int patch = 0; patch < patches.count(); ++patch) {
        const std::span<const int> triangles = patches.triangles[patch];
        Box3 box;
        box.low = box.high = mesh.positions[at(mesh.triangles[at(triangles.front())][0])];
        for (const int t : triangles)
            for (const int v : mesh.triangles[at(t)]) {
                box.add(mesh.positions[at(v)]);
                parts.ofVertex[at(v)] = patch;
            }
        parts.diagonals.push_back(std::max(length(box.high - box.low), leastDiagonal));
    }
    parts.ofTriangle = std::move(patches.ofTriangle);
    return parts;
}

} // namespace unfold3d
