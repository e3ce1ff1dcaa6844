#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <span>

namespace unfold3d
{

/// The symmetric Dirichlet energy of a layout ([vertex]) at its best scale, as a mean over the
/// area: 4 for an isometric one, infinite where a triangle is flipped.
double startDistortion(const IslandMesh& mesh, std::span<const Vec2> uv);

} // namespace unfold3d
