#include "Unfold3D/layout/Blend.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

constexpr double steps = 32.0;

std::vector<Vec2> between(std::span<const Vec2> from, std::span<const Vec2> to, double share)
{
    std::vector<Vec2> layout(from.begin(), from.end());
    if (share == 1.0)
        layout.assign(to.begin(), to.end());
    else if (share > 0.0)
        for (std::size_t v = 0; v < layout.size(); ++v)
            layout[v] += share * (to[v] - from[v]);
    return layout;
}

} // namespace

std::vector<Vec2> blend(std::span<const Vec2> from, std::span<const Vec2> to, double share,
                        const std::function<bool(std::span<const Vec2>)>& isAllowed)
{
    std::vector<Vec2> layout = between(from, to, share);
    for (double step = std::ceil(share * steps) - 1.0; share > 0.0 && !isAllowed(layout);
         step -= 1.0)
    {
        share = std::max(step, 0.0) / steps;
        layout = between(from, to, share);
    }
    return layout;
}

} // namespace unfold3d
