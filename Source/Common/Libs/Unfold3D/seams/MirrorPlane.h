#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <optional>
#include <span>

namespace unfold3d
{

/// The normal of the plane through the middle of a surface by which the surface is its own image,
/// none where there isn't one. Of several planes,
/// the one across the shortest axis.
///
/// positions  [vertex] with the middle of the area at the origin, as in a SeamMesh
/// samples    vertices to look at: each has to have a vertex within about an edge of its image
///
/// The normal of such a plane is a principal axis of the surface. Axes of which there is more than
/// one about as long, as on a surface of revolution, are not looked at: which of them are found is
/// up to rounding. Near linear.
std::optional<Vec3> mirrorPlane(std::span<const Vec3> positions,
                                std::span<const Triangle> triangles, std::span<const int> samples);

} // namespace unfold3d
