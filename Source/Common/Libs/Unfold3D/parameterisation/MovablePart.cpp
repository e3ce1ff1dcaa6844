#include "Unfold3D/parameterisation/MovablePart.h"

#include <algorithm>
#include <numeric>

namespace unfold3d
{

MovablePart::MovablePart(const IslandMesh& island, std::span<const char> isFixedVertex)
    : mesh(island), isFixed(isFixedVertex)
{
    if (isFixed.empty()) {
        triangles.resize(mesh.triangles.size());
        std::iota(triangles.begin(), triangles.end(), 0);
        corners = mesh.triangles;
        return;
    }
    const auto moves = [&](int v) { return !isFixed[static_cast<std::size_t>(v)]; };
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const Triangle& triangle = mesh.triangles[static_cast<std::size_t>(t)];
        if (!std::any_of(triangle.begin(), triangle.end(), moves))
            continue;
        triangles.push_back(t);
        corners.push_back(triangle);
    }
}

} // namespace unfold3d
