#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// Gives every fan of triangles around a vertex a vertex of its own, so that what touches in a
/// single vertex lets go of each other there.
///
/// triangles    [3 * n]  manifold, none with a repeated vertex; rewritten
/// vertexCount           grows by the vertices that are split off
///
/// A fan is what hangs together over edges at the vertex. The one with the lowest corner keeps it.
/// About linear.
void separateVertexFans(std::vector<std::uint32_t>& triangles, std::size_t& vertexCount);

} // namespace uvtool
