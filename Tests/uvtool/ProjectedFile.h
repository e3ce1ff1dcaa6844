#pragma once

#include "document/Format.h"
#include "document/Transform.h"
#include "document/Vec3Math.h"

#include <array>
#include <cmath>
#include <filesystem>
#include <vector>

namespace uvtool::test
{

/// A triangle of a file, in its scene.
struct MappedTriangle
{
    std::array<Vec3d, 3> positions;
    std::array<Vec2f, 3> uvs;

    Vec3d normal() const { return areaNormal(positions[0], positions[1], positions[2]); }
};

/// Of all geometries; corners without a UV have NaN.
inline std::vector<MappedTriangle> mappedTriangles(const std::filesystem::path& file,
                                                   std::size_t slot = 0)
{
    std::vector<MappedTriangle> triangles;
    for (const DocumentGeometry& geometry : readDocument(file).geometries)
        for (std::size_t i = 0; i < geometry.triangles.size(); ++i) {
            const std::uint32_t corner = geometry.triangles[i];
            if (i % 3 == 0)
                triangles.emplace_back();
            triangles.back().positions[i % 3] =
                toScene(geometry.toWorld, geometry.positions.at(corner));
            triangles.back().uvs[i % 3] =
                geometry.uvs[slot].has(corner) ? geometry.uvs[slot].at(corner) : Vec2f{NAN, NAN};
        }
    return triangles;
}

} // namespace uvtool::test
