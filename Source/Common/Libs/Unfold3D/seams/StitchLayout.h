#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/PatchLayout.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// One place for each vertex ([vertex]) from places for the corners of each triangle on its own
/// that don't quite agree: such that every triangle keeps its shape and turn as well as can be, so
/// that what they miss to each other at a seam is spread over the whole layout (the global step of
/// Liu, Zhang, Xu, Gotsman and Gortler 2008, "A local/global approach to mesh parameterization").
///
/// triangles  in one part through vertices
/// corners    [triangle]  not mirrored
/// Costs one sparse factorisation. Throws Stopped.
std::vector<Vec2> stitchedLayout(std::span<const Triangle> triangles, int vertexCount,
                                 std::span<const CornerUVs> corners, const RunControl& control);

} // namespace unfold3d
