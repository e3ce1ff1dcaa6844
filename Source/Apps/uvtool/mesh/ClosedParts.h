#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// Gives parts without a border vertices of their own where they touch other parts.
///
/// A part is what hangs together over edges. A closed one that touches an open one in a vertex
/// would keep it from being unfolded, since both are one island.
///
/// triangles    [3 * n]  manifold, none with a repeated vertex; rewritten
/// vertexCount           grows by the vertices that are split off
///
/// Parts with a border stay joined in the vertices that they share. About linear.
void detachClosedParts(std::vector<std::uint32_t>& triangles, std::size_t& vertexCount);

} // namespace uvtool
