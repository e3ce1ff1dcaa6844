#pragma once

#include "scene/SceneGeometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// Where the triangles of a target lie on a source, both in one frame.
struct NearestTriangles
{
    std::vector<std::uint32_t> triangles; ///< [triangle of the target] the nearest to its middle
    double distance = 0.0;                ///< the largest from a middle to the source
};

/// Finds them on all threads. Where no number can tell the nearest one it is 0. O((s + t) log s)
/// for s triangles of the source, of which there has to be one.
NearestTriangles nearestTriangles(const SceneGeometry& source, const SceneGeometry& target);

} // namespace uvtool
