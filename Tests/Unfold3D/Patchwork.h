#pragma once

#include "Unfold3D/base/IslandMesh.h"

#include <random>
#include <vector>

/// Layouts of several islands for the tests of packing.
namespace patchwork
{

using unfold3d::IslandMesh;
using unfold3d::Triangle;
using unfold3d::Vec2;

/// One island in the UV plane.
struct Patch
{
    std::vector<Vec2> uvs;
    std::vector<Triangle> triangles;
};

/// A patch moved, turned by an angle in degrees, and scaled. A negative scale along u mirrors it.
Patch placed(const Patch& patch, Vec2 by, double degrees = 0.0, Vec2 scale = {1.0, 1.0});

Patch rectangle(double width, double height);
/// A square ring: a square of side 1 with a hole in its middle.
Patch frame(double hole);
/// Three sides of a square of side 1 with arms of this thickness: an U.
Patch clamp(double thickness);
/// A star of `spikes` with a deep notch between each two.
Patch star(int spikes, double innerRadius);
/// A strip that is folded back onto itself, so a part is covered twice and half of its triangles
/// are mirrored.
Patch foldedStrip();
/// Four triangles on one line, and a triangle whose corners are at one point.
Patch line(double length);
Patch point();

/// Patches in one mesh. In space each is as it stands in UV, flat and scaled by `spaceScale`.
struct Layout
{
    Layout() = default;
    Layout(const std::vector<Patch>& patches);

    IslandMesh mesh;
    std::vector<Vec2> uvs;
    std::vector<int> patchOfTriangle;
    std::vector<int> patchOfVertex;
    int patchCount = 0;

    void add(const Patch& patch, double spaceScale = 1.0);
};

/// `count` patches of all kinds above but the line and the point, of many sizes, turned anyhow and
/// lying over each other. The same for the same seed.
Layout randomLayout(int count, unsigned seed);

} // namespace patchwork
