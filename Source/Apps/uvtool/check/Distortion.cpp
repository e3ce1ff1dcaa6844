#include "check/Distortion.h"

#include "document/Vec3Math.h"
#include "layout/TriangleMeasures.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace uvtool
{
namespace
{

/// A triangle lower than this share of its longest side has no shape to compare, only rounding.
constexpr double leastHeight = 1e-12;

/// A triangle in the plane, by two of its sides.
struct FlatTriangle
{
    double ax, ay, bx, by;

    double doubleArea() const { return std::abs(ax * by - ay * bx); }
    bool hasArea() const
    {
        const double longest = std::max(
            {ax * ax + ay * ay, bx * bx + by * by, (bx - ax) * (bx - ax) + (by - ay) * (by - ay)});
        return doubleArea() > leastHeight * longest;
    }
};

FlatTriangle inUV(const UVLayout& layout, std::size_t t)
{
    const auto& a = layout.point(t, 0);
    const auto& b = layout.point(t, 1);
    const auto& c = layout.point(t, 2);
    return {double{b[0]} - a[0], double{b[1]} - a[1], double{c[0]} - a[0], double{c[1]} - a[1]};
}

/// The triangle as it lies in space, its first side along x.
FlatTriangle inItsPlane(std::span<const Vec3d> corners)
{
    const Vec3d a = difference(corners[1], corners[0]);
    const Vec3d b = difference(corners[2], corners[0]);
    const double length = std::sqrt(dot(a, a));
    if (length <= 0.0)
        return {};
    const Vec3d normal = cross(a, b);
    return {length, 0.0, dot(a, b) / length, std::sqrt(dot(normal, normal)) / length};
}

/// s^2 + t^2 of the map from one triangle to the other, of which the first has an area.
double sumOfSquares(const FlatTriangle& from, const FlatTriangle& to)
{
    const double ux = to.ax / from.ax;
    const double uy = to.ay / from.ax;
    const double vx = (to.bx - ux * from.bx) / from.by;
    const double vy = (to.by - uy * from.bx) / from.by;
    return ux * ux + uy * uy + vx * vx + vy * vy;
}

/// Integrals over an island of s^2 + t^2 and of 1/s^2 + 1/t^2, which tell its best scale.
struct IslandSums
{
    double stretch = 0.0;
    double shrink = 0.0;
};

} // namespace

Distortion measureDistortion(const UVLayout& layout, std::span<const Vec3d> positions)
{
    Distortion distortion;
    std::vector<IslandSums> islands;
    for (std::size_t t = 0; t < layout.triangleCount(); ++t) {
        if (layout.islandOfTriangle[t] < 0 || !isFinite(layout, t))
            continue;
        const FlatTriangle from = inItsPlane(positions.subspan(3 * t, 3));
        const FlatTriangle to = inUV(layout, t);
        if (!from.hasArea() || !to.hasArea())
            continue;
        const auto island = static_cast<std::size_t>(layout.islandOfTriangle[t]);
        islands.resize(std::max(islands.size(), island + 1));
        const double area = from.doubleArea() / 2;
        const double scale = to.doubleArea() / from.doubleArea();
        const double squares = sumOfSquares(from, to);
        islands[island].stretch += area * squares;
        islands[island].shrink += area * squares / (scale * scale);
        distortion.angleSum += area * squares / (2 * scale);
        distortion.area += area;
    }
    for (const IslandSums& island : islands)
        distortion.energySum += 2 * std::sqrt(island.stretch * island.shrink);
    return distortion;
}

} // namespace uvtool
