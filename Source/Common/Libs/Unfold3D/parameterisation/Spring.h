#pragma once

#include "Unfold3D/base/Vec.h"

#include <array>

namespace unfold3d
{

/// The derivatives of an energy of one number, f(x), where x depends on up to three nodes: a node's
/// gradient of x is its direction, and second derivatives of x are left out.
struct Spring
{
    int count = 0; ///< of the nodes
    std::array<int, 3> nodes{};
    std::array<Vec2, 3> directions{};
    double slope = 0.0;     ///< f'(x)
    double curvature = 0.0; ///< f''(x), not negative
};

} // namespace unfold3d
