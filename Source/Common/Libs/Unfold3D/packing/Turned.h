#pragma once

#include "Unfold3D/base/Vec.h"

namespace unfold3d
{

/// Turns `p` by the angle of `turn` and scales it by its length: the product of complex numbers.
inline Vec2 turned(Vec2 p, Vec2 turn)
{
    return {turn.x * p.x - turn.y * p.y, turn.x * p.y + turn.y * p.x};
}

} // namespace unfold3d
