#include "Unfold3D/seams/PatchSurface.h"

#include "Unfold3D/mesh/IslandSurface.h"

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

PatchTaker::PatchTaker(const SeamMesh& mesh) : mesh_(mesh), placeOf_(mesh.triangles.size(), -1) {}

/// The half-edge on the other side; -1 where the patch ends.
int PatchTaker::neighbourAcross(int h, std::span<const char> isSeam) const
{
    const int edge = mesh_.edgeOf[at(h)];
    if (edge < 0 || isSeam[at(edge)])
        return -1;
    const int twin = mesh_.twin[at(h)];
    return placeOf_[at(twin / 3)] < 0 ? -1 : twin;
}

PatchSurface PatchTaker::take(std::span<const int> triangles, std::span<const char> isSeam)
{
    for (std::size_t i = 0; i < triangles.size(); ++i)
        placeOf_[at(triangles[i])] = static_cast<int>(i);
    PatchSurface patch;
    patch.mesh.triangles.assign(triangles.size(), {-1, -1, -1});
    const auto vertexAt = [&](int h) -> int& {
        return patch.mesh.triangles[at(placeOf_[at(h / 3)])][at(h % 3)];
    };
    for (const int t : triangles)
        for (int h = 3 * t; h < 3 * t + 3; ++h) {
            if (vertexAt(h) >= 0)
                continue;
            // All corners of the fan around the vertex: first one way round, then the other.
            const int vertex = patch.mesh.vertexCount();
            patch.vertices.push_back(mesh_.originOf(h));
            patch.mesh.positions.push_back(mesh_.positions[at(mesh_.originOf(h))]);
            for (int g = h; g >= 0 && vertexAt(g) < 0;
                 g = neighbourAcross(previousHalfEdge(g), isSeam))
                vertexAt(g) = vertex;
            for (int g = neighbourAcross(h, isSeam); g >= 0 && vertexAt(nextHalfEdge(g)) < 0;
                 g = neighbourAcross(nextHalfEdge(g), isSeam))
                vertexAt(nextHalfEdge(g)) = vertex;
        }
    patch.size = normalise(patch.mesh);
    for (const int t : triangles)
        placeOf_[at(t)] = -1;
    return patch;
}

} // namespace unfold3d
