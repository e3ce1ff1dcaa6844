#include "picture/DepthRaster.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// Twice the area of a triangle in the picture, signed.
double turn(const Vec3d& a, const Vec3d& b, double x, double y)
{
    return (b[0] - a[0]) * (y - a[1]) - (b[1] - a[1]) * (x - a[0]);
}

std::int32_t clampToRaster(double coordinate, std::int32_t size)
{
    return static_cast<std::int32_t>(std::clamp(coordinate, 0.0, static_cast<double>(size)));
}

} // namespace

void DepthRaster::draw(std::uint32_t triangle, const std::array<Vec3d, 3>& corners)
{
    const auto& [a, b, c] = corners;
    const double area = turn(a, b, c[0], c[1]);
    if (!(std::abs(area) > 0.0))
        return;
    const auto [left, right] = std::minmax({a[0], b[0], c[0]});
    const auto [top, bottom] = std::minmax({a[1], b[1], c[1]});
    const std::int32_t columnEnd = clampToRaster(std::ceil(right + 0.5), size_);
    const std::int32_t rowEnd = clampToRaster(std::ceil(bottom + 0.5), size_);
    for (std::int32_t row = clampToRaster(top - 0.5, size_); row < rowEnd; ++row)
        for (std::int32_t column = clampToRaster(left - 0.5, size_); column < columnEnd; ++column) {
            const double x = column + 0.5;
            const double y = row + 0.5;
            const double wa = turn(b, c, x, y) / area;
            const double wb = turn(c, a, x, y) / area;
            const double wc = 1.0 - wa - wb;
            if (wa < 0.0 || wb < 0.0 || wc < 0.0)
                continue;
            const double depth = wa * a[2] + wb * b[2] + wc * c[2];
            if (!(depth > depths_[cell(row, column)]))
                continue;
            depths_[cell(row, column)] = depth;
            hits_[cell(row, column)] = {
                triangle, {static_cast<float>(wa), static_cast<float>(wb), static_cast<float>(wc)}};
        }
}

} // namespace uvtool
