#pragma once

#include "Unfold3D/layout/VertexStars.h"

#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

struct FloatRounding
{
    int moved = 0;       ///< vertices that lie elsewhere than at the nearest floats
    int flipsLeft = 0;   ///< triangles that don't turn counter-clockwise
    int touchesLeft = 0; ///< pairs of border edges that touch; not counted when they did before
};

/// Rounds the layout of an island to floats, as a caller will store it, so that no triangle flips
/// and the border doesn't touch itself unless it did: where a plain rounding would bring that
/// about, vertices move by a few steps of the float grid. All tests are exact. The coordinates stay
/// doubles and are floats in value.
///
/// triangles  all counter-clockwise in uv
/// uv         [vertex]  finite, within the range of floats; rounded in place
/// held       [vertex]  may be empty, which holds nothing
///
/// Layouts in which floats are much finer than the triangles and gaps are done in a pass over the
/// triangles and one over the border. In a layout too thin for floats something may be left over,
/// which the answer counts. The same on every run.
FloatRounding roundToFloats(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
                            std::span<const std::uint8_t> held = {});

} // namespace unfold3d
