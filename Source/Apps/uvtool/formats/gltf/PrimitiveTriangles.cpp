#include "formats/gltf/PrimitiveTriangles.h"

namespace uvtool
{
namespace
{

/// Every second triangle of a strip is turned the other way.
void addStrip(std::span<const std::uint32_t> indices, std::vector<std::uint32_t>& triangles)
{
    for (std::size_t i = 0; i + 2 < indices.size(); ++i) {
        const std::size_t odd = i % 2;
        triangles.insert(triangles.end(), {indices[i], indices[i + 1 + odd], indices[i + 2 - odd]});
    }
}

void addFan(std::span<const std::uint32_t> indices, std::vector<std::uint32_t>& triangles)
{
    for (std::size_t i = 1; i + 1 < indices.size(); ++i)
        triangles.insert(triangles.end(), {indices[i], indices[i + 1], indices[0]});
}

} // namespace

std::vector<std::uint32_t> trianglesOf(GltfMode mode, std::span<const std::uint32_t> indices)
{
    std::vector<std::uint32_t> triangles;
    switch (mode) {
    case GltfMode::Triangles:
        triangles.assign(indices.begin(),
                         indices.end() - static_cast<std::ptrdiff_t>(indices.size() % 3));
        break;
    case GltfMode::TriangleStrip:
        addStrip(indices, triangles);
        break;
    case GltfMode::TriangleFan:
        addFan(indices, triangles);
        break;
    }
    return triangles;
}

} // namespace uvtool
