#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// How exposed each vertex of a surface is: the share of the light from all around that reaches it
/// (ambient occlusion). 1 on a sphere, small in a crease, between legs and inside of a bottle. Of
/// the two sides of the surface the lighter one counts, so that the winding doesn't matter.
///
/// Rays are traced from at most a few thousand vertices; others take the value of their neighbours.
/// The result is smoothed over neighbours and is the same for any number of processors. A vertex
/// that no triangle uses gets 1. Throws Stopped.
std::vector<double> vertexVisibility(std::span<const Vec3> positions,
                                     std::span<const Triangle> triangles,
                                     const RunControl& control);

} // namespace unfold3d
