#include "Unfold3D/seams/SurfaceExtent.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Diagonals by root mean square distances from the middle: 3.46 on a sphere or a rod, 2.7 on a
/// cube.
constexpr double perMeanDistance = 3.2;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

SurfaceExtent extentOf(std::span<const Vec3> positions, std::span<const Triangle> triangles,
                       std::span<const int> wanted)
{
    if (wanted.empty())
        return {};
    // From a point near by, so that a surface far from the origin loses no digits.
    const Vec3 origin = positions[at(triangles[at(wanted.front())][0])];
    double area = 0.0;
    double farthest = 0.0;
    double squares = 0.0;
    Vec3 sum;
    for (const int t : wanted) {
        std::array<Vec3, 3> p;
        for (std::size_t i = 0; i < 3; ++i) {
            p[i] = positions[at(triangles[at(t)][i])] - origin;
            farthest = std::max(farthest, length(p[i]));
        }
        const double weight = 0.5 * length(cross(p[1] - p[0], p[2] - p[0]));
        const Vec3 corners = p[0] + p[1] + p[2];
        area += weight;
        sum = sum + (weight / 3.0) * corners;
        squares += weight / 12.0 *
                   (dot(p[0], p[0]) + dot(p[1], p[1]) + dot(p[2], p[2]) + dot(corners, corners));
    }
    if (!(area > 0.0))
        return {origin, farthest};
    const Vec3 middle = (1.0 / area) * sum;
    const double spread = std::max(squares / area - dot(middle, middle), 0.0);
    return {origin + middle, perMeanDistance * std::sqrt(spread)};
}

} // namespace unfold3d
