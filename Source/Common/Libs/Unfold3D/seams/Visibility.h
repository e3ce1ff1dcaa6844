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
/// Rays are traced from some vertices, `samples`; others take the value of their neighbours. The
/// result is smoothed over neighbours and is the same for any number of processors, and but for
/// rays that pass an edge closely the same when the surface is turned around the origin or mirrored
/// there. A vertex that no triangle uses gets 1. Throws Stopped.
std::vector<double> vertexVisibility(std::span<const Vec3> positions,
                                     std::span<const Triangle> triangles,
                                     std::span<const int> samples, const RunControl& control);

} // namespace unfold3d
