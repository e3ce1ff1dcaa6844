#include "Unfold3D/seams/MeshParts.h"

#include "Unfold3D/base/DisjointSets.h"

#include <algorithm>

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

MeshParts findParts(const SeamMesh& mesh)
{
    DisjointSets sets(mesh.vertexCount());
    for (const Triangle& t : mesh.triangles) {
        sets.join(t[0], t[1]);
        sets.join(t[0], t[2]);
    }
    MeshParts parts;
    std::vector<Box3> boxes;
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        const int lowest = sets.find(v);
        const Vec3 p = mesh.positions[at(v)];
        if (lowest == v)
            boxes.push_back({p, p});
        parts.ofVertex.push_back(lowest == v ? static_cast<int>(boxes.size()) - 1
                                             : parts.ofVertex[at(lowest)]);
        boxes[at(parts.ofVertex[at(v)])].add(p);
    }
    for (const Box3& box : boxes)
        parts.diagonals.push_back(std::max(length(box.high - box.low), leastDiagonal));
    parts.areas.assign(boxes.size(), leastDiagonal * leastDiagonal);
    for (int t = 0; t < mesh.triangleCount(); ++t)
        parts.areas[at(parts.ofVertex[at(mesh.triangles[at(t)][0])])] += mesh.areas[at(t)];
    return parts;
}

} // namespace unfold3d
