#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Where an island lies in UV and how large, as a way to and from a layout around the origin that
/// has the scale of its normalised surface.
struct LayoutFrame
{
    Vec2 middle;        ///< of its box
    double scale = 1.0; ///< length in UV of what has length 1 on the surface; never 0

    Vec2 inside(Vec2 uv) const { return (1.0 / scale) * (uv - middle); }
    Vec2 outside(Vec2 p) const { return middle + scale * p; }
};

/// The sum of the signed areas of triangles in a layout ([vertex]), and of their sizes.
struct LayoutArea
{
    double signedSum = 0.0;
    double sizes = 0.0;
};
LayoutArea layoutArea(std::span<const Triangle> triangles, std::span<const Vec2> uv);

/// Whether a layout is mirrored: most of its area turns clockwise. In a tangle, of whose area folds
/// leave less than half, triangles tell it whose corners are all fixed, where there are some.
bool isMirrored(const IslandMesh& mesh, std::span<const Vec2> uv, std::span<const char> isFixed);

/// Finds the frame of a layout. Its scale is the root of its area by that of the surface; folds
/// don't count twice, unless most of it is folded. Where some of the surface lies fixed with all
/// corners of its triangles, the scale is that of this part.
///
/// mesh     turns in uv the way that most of its area does
/// uv       [vertex]  finite
/// isFixed  [vertex]  may be empty
/// fallback           the scale of a layout that is a point
LayoutFrame frameOf(const IslandMesh& mesh, std::span<const Vec2> uv, std::span<const char> isFixed,
                    double fallback);

} // namespace unfold3d
