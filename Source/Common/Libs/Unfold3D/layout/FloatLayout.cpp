#include "Unfold3D/layout/FloatLayout.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/layout/FlipRepair.h"
#include "Unfold3D/layout/TouchRepair.h"

namespace unfold3d
{

namespace
{

std::vector<Vec2> nearestFloats(const std::vector<Vec2>& uv)
{
    std::vector<Vec2> rounded;
    rounded.reserve(uv.size());
    for (const Vec2 p : uv)
        rounded.push_back({toFloat(p.x), toFloat(p.y)});
    return rounded;
}

int countDifferences(const std::vector<Vec2>& a, const std::vector<Vec2>& b)
{
    int count = 0;
    for (std::size_t v = 0; v < a.size(); ++v)
        count += !(a[v] == b[v]);
    return count;
}

} // namespace

FloatRounding roundToFloats(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
                            std::span<const std::uint8_t> held)
{
    const std::vector<Vec2> rounded = nearestFloats(uv);
    const BorderEdges border = borderEdges(triangles, static_cast<int>(uv.size()));
    const std::vector<int> flipped = flippedTriangles(triangles, rounded);
    const bool isTouched = countTouches(border, rounded) > 0;
    const bool wasTouched = isTouched && countTouches(border, uv) > 0;
    uv = rounded;
    FloatRounding result;
    if (flipped.empty() && (!isTouched || wasTouched))
        return result;

    VertexStars stars(triangles, uv, held);
    repairFlips(triangles, stars, flipped);
    if (!wasTouched) {
        repairTouches(border, uv, stars);
        result.touchesLeft = countTouches(border, uv);
    }
    result.moved = countDifferences(uv, rounded);
    result.flipsLeft = static_cast<int>(flippedTriangles(triangles, uv).size());
    return result;
}

} // namespace unfold3d
