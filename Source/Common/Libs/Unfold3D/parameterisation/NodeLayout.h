#pragma once

#include "Unfold3D/base/Vec.h"

#include <span>

namespace unfold3d
{

/// A layout whose values stand in another order than its nodes, the vertices of an island and what
/// further unknowns come behind them: node n lies at uv[place[n]], or at uv[n] when `place` is
/// empty.
struct NodeLayout
{
    std::span<const Vec2> uv;
    std::span<const int> place{};

    Vec2 at(int node) const
    {
        const auto n = static_cast<std::size_t>(node);
        return uv[place.empty() ? n : static_cast<std::size_t>(place[n])];
    }
};

} // namespace unfold3d
