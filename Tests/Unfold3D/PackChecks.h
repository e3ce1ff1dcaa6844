#pragma once

#include "Patchwork.h"

#include "Unfold3D/base/Box2.h"
#include "Unfold3D/packing/OutlineTree.h"

#include <span>
#include <vector>

/// Plain measures of packed layouts, triangle by triangle, that share nothing with the
/// packer but the orientation of three points.
namespace packed
{

using unfold3d::Box2;
using unfold3d::Vec2;

/// The least distance between triangles of two different patches; 0 where two of them overlap,
/// infinite with fewer than two patches.
double leastGap(const patchwork::Layout& layout, std::span<const Vec2> uvs);

/// The distance between two segments; 0 where they cross.
double distance(Vec2 a, Vec2 b, Vec2 c, Vec2 d);

/// The outline of a patch.
std::vector<unfold3d::OutlineEdge> outlineOf(const patchwork::Patch& patch);

/// The box around all UVs, or around those of one patch.
Box2 bounds(std::span<const Vec2> uvs);
Box2 boundsOfPatch(const patchwork::Layout& layout, std::span<const Vec2> uvs, int patch);

/// Sum of the areas of all triangles of a patch.
double areaInUV(const patchwork::Layout& layout, std::span<const Vec2> uvs, int patch);
double areaInSpace(const patchwork::Layout& layout, int patch);
double wholeArea(const patchwork::Layout& layout, std::span<const Vec2> uvs);

/// Are all patches turned and scaled only, each by a factor of its own? To within `tolerance`
/// relative to the size of a patch. Mirroring and bending are not.
bool areSimilar(const patchwork::Layout& layout, std::span<const Vec2> before,
                std::span<const Vec2> after, double tolerance);

/// UVs rounded as the application stores them.
std::vector<Vec2> asFloats(std::span<const Vec2> uvs);

} // namespace packed
