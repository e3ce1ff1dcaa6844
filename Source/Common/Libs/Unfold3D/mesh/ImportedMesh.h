#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <cstdint>
#include <vector>

namespace unfold3d
{

/// A mesh as it was imported. A vertex is a UV point; each has one position in space, which it may
/// share with others across a seam. Triangles keep their numbers, the bad ones included.
struct ImportedMesh
{
    enum Part : std::int8_t
    {
        Sound,
        NoArea, ///< three corners, but on one line: takes part with the shape of a stand-in
        LeftOut ///< a repeated corner, or the copy of an earlier triangle: takes no part
    };

    std::vector<Vec3> positions;     ///< [vertex] as given
    std::vector<Triangle> triangles; ///< [triangle] as given
    std::vector<Part> parts;         ///< [triangle]

    int vertexCount() const { return static_cast<int>(positions.size()); }
    int triangleCount() const { return static_cast<int>(triangles.size()); }
};

} // namespace unfold3d
