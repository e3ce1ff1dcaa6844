#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <span>

namespace unfold3d
{

/// How large a surface is, and where: the same however it is turned.
struct SurfaceExtent
{
    Vec3 middle;       ///< of its area
    double size = 0.0; ///< about the diagonal of the box around it; 0 only where it is a point
};

/// Of some of the triangles.
SurfaceExtent extentOf(std::span<const Vec3> positions, std::span<const Triangle> triangles,
                       std::span<const int> wanted);

} // namespace unfold3d
