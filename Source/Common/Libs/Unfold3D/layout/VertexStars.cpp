#include "Unfold3D/layout/VertexStars.h"

#include "Unfold3D/base/ExactPredicates.h"

#include <algorithm>
#include <limits>

namespace unfold3d
{

namespace
{

/// Height in steps of the float grid beyond which a triangle is out of danger.
constexpr double safeHeight = 1.5;

double coarsestStep(std::span<const Vec2> uv)
{
    float largest = 0.0F;
    for (const Vec2 p : uv)
        largest = std::max(
            {largest, static_cast<float>(std::abs(p.x)), static_cast<float>(std::abs(p.y))});
    const float next = std::nextafter(largest, std::numeric_limits<float>::infinity());
    return static_cast<double>(next) - static_cast<double>(largest);
}

OffsetArray<int> cornersByVertex(std::span<const Triangle> triangles, std::size_t vertexCount)
{
    std::vector<int> vertexOfCorner;
    vertexOfCorner.reserve(3 * triangles.size());
    for (const Triangle& t : triangles)
        vertexOfCorner.insert(vertexOfCorner.end(), t.begin(), t.end());
    return groupByKey(vertexOfCorner, static_cast<int>(vertexCount));
}

} // namespace

VertexStars::VertexStars(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
                         std::span<const std::uint8_t> held)
    : triangles_(triangles), uv_(uv), held_(held),
      cornersOfVertex_(cornersByVertex(triangles, uv.size())), step_(coarsestStep(uv))
{
    for (const Vec2 p : uv)
        room_.add(p);
    room_ = room_.inflatedBy(maxStepsOut * step_);
}

bool VertexStars::isSound(int triangle) const
{
    const Triangle& corner = triangles_[static_cast<std::size_t>(triangle)];
    return orient2d(at(corner[0]), at(corner[1]), at(corner[2])) > 0;
}

double VertexStars::heightOf(int triangle) const
{
    const Triangle& corner = triangles_[static_cast<std::size_t>(triangle)];
    const Vec2 a = at(corner[0]);
    const Vec2 b = at(corner[1]);
    const Vec2 c = at(corner[2]);
    const double longest = std::max({length(b - a), length(c - b), length(a - c), step_});
    // The area itself is exact enough in doubles, its sign has to be exact.
    const double height =
        std::max(std::abs(doubleArea(a, b, c)) / longest, std::numeric_limits<double>::min());
    return std::min(orient2d(a, b, c) * height, safeHeight * step_);
}

std::array<double, 2> VertexStars::safetyAt(int v) const
{
    std::array<double, 2> safety{safeHeight * step_, 0.0};
    for (const int corner : cornersOf(v)) {
        const double height = heightOf(corner / 3);
        safety[0] = std::min(safety[0], height);
        safety[1] += height;
    }
    return safety;
}

} // namespace unfold3d
