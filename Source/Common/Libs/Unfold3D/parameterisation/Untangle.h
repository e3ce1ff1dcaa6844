#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/parameterisation/MovablePart.h"

#include <functional>
#include <vector>

namespace unfold3d
{

struct UntangleResult
{
    std::vector<Vec2> uv; ///< [vertex]
    int steps = 0;        ///< factorisations
    bool isDone = false;  ///< no triangle that can change is flipped any more
};

/// Turns flipped triangles of a layout round, where the fixed vertices leave a way: minimises a
/// soft energy whose softness falls, after Garanzha and others, "Foldover-free maps in 50 lines of
/// code" (2021), by Newton steps. First only near the flipped triangles, then farther around them,
/// then everywhere.
///
/// uv        [vertex]  finite, with a flipped triangle, about where a layout of area 1 around the
/// origin would be progress            called with 0 to 1 as the work goes on
///
/// When it isn't done the layout is the one with the fewest flipped triangles on the way. A layout
/// without flips may still lie over itself. The same bits on every run. Throws Stopped.
UntangleResult untangle(const MovablePart& part, std::vector<Vec2> uv, const RunControl& control,
                        const std::function<void(double)>& progress);

/// Lays the vertices that move where the fixed ones, at least two, are continued with the best
/// angles, whatever the place they had. May flip triangles. One factorisation.
void continueFixedPart(const MovablePart& part, std::vector<Vec2>& uv, const RunControl& control);

/// Lets a layout with flipped triangles settle where the soft energy is least.
void settleWithFlips(const MovablePart& part, std::vector<Vec2>& uv, const RunControl& control);

} // namespace unfold3d
