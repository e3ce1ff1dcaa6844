#include "Unfold3D/base/FlipCheck.h"

#include "Unfold3D/base/ExactPredicates.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

bool isFlipped(const Triangle& triangle, std::span<const Vec2> uv)
{
    const Vec2 a = uv[static_cast<std::size_t>(triangle[0])];
    const Vec2 b = uv[static_cast<std::size_t>(triangle[1])];
    const Vec2 c = uv[static_cast<std::size_t>(triangle[2])];
    const bool isFinite = std::isfinite(a.x + a.y + b.x + b.y + c.x + c.y);
    return !isFinite || orient2d(a, b, c) <= 0;
}

} // namespace

std::vector<int> flippedTriangles(std::span<const Triangle> triangles, std::span<const Vec2> uv)
{
    std::vector<int> flipped;
    for (std::size_t t = 0; t < triangles.size(); ++t)
        if (isFlipped(triangles[t], uv))
            flipped.push_back(static_cast<int>(t));
    return flipped;
}

bool isFlipFree(std::span<const Triangle> triangles, std::span<const Vec2> uv)
{
    return std::none_of(triangles.begin(), triangles.end(),
                        [&](const Triangle& t) { return isFlipped(t, uv); });
}

} // namespace unfold3d
