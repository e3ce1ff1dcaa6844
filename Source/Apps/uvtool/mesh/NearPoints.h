#pragma once

#include "document/Document.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// For each point the lowest of those that it hangs together with, through steps of at most
/// `tolerance` along each axis; a point by itself is its own. Answers depend on the points alone.
/// About linear where few points lie within the tolerance of each other.
std::vector<std::uint32_t> lowestNearPoints(std::span<const Vec3d> points, double tolerance);

} // namespace uvtool
