#pragma once

#include "Unfold3D/base/Vec.h"

#include <functional>
#include <span>
#include <vector>

namespace unfold3d
{

/// Goes from one layout towards another, every vertex on a straight line: by `share`, 0 to 1, of
/// the way where `isAllowed` says yes to that, else as far below it as it does, in steps of a
/// 32nd of the way. What doesn't move keeps its bits.
std::vector<Vec2> blend(std::span<const Vec2> from, std::span<const Vec2> to, double share,
                        const std::function<bool(std::span<const Vec2>)>& isAllowed);

} // namespace unfold3d
