#pragma once

#include "document/Document.h"

#include <array>

namespace uvtool
{

/// From the space of a geometry to the scene's; columns first.
using SceneMatrix = std::array<double, 16>;

/// A point of the geometry in the scene.
Vec3d toScene(const SceneMatrix& toWorld, const Vec3d& point);

/// A normal of the geometry in the scene, of length 1; zero where the matrix leaves none.
Vec3d normalToScene(const SceneMatrix& toWorld, const Vec3f& normal);

} // namespace uvtool
