#pragma once

#include <array>

namespace uvtool
{

/// Which way the turn a, b, c goes: 1 counter-clockwise, -1 clockwise, 0 straight. The sign is
/// exact for all finite floats.
int orientation(const std::array<float, 2>& a, const std::array<float, 2>& b,
                const std::array<float, 2>& c);

} // namespace uvtool
