#include "Unfold3D/parameterisation/MovablePart.h"

#include <algorithm>

namespace unfold3d
{

MovablePart::MovablePart(const IslandMesh& island, std::span<const char> isFixedVertex)
    : mesh(island), isFixed(isFixedVertex)
{
    const auto moves = [&](int v) {
        return isFixed.empty() || !isFixed[static_cast<std::size_t>(v)];
    };
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const Triangle& triangle = mesh.triangles[static_cast<std::size_t>(t)];
        if (!std::any_of(triangle.begin(), triangle.end(), moves))
            continue;
        triangles.push_back(t);
        corners.push_back(triangle);
    }
}

} // namespace unfold3d
