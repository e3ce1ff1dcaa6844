#include "report/EditReport.h"

#include "layout/TriangleMeasures.h"

#include <cmath>

namespace uvtool
{
namespace
{

double areaInScene(std::span<const Vec3d> p)
{
    Vec3d normal{};
    for (std::size_t k = 0; k < 3; ++k) {
        const std::size_t i = (k + 1) % 3;
        const std::size_t j = (k + 2) % 3;
        normal[k] =
            (p[1][i] - p[0][i]) * (p[2][j] - p[0][j]) - (p[1][j] - p[0][j]) * (p[2][i] - p[0][i]);
    }
    return std::hypot(normal[0], normal[1], normal[2]) / 2;
}

} // namespace

double LayoutMeasures::texelDensity() const
{
    return sceneArea > 0.0 ? std::sqrt(area / sceneArea) : 0.0;
}

LayoutMeasures& LayoutMeasures::operator+=(const LayoutMeasures& other)
{
    bounds.add(other.bounds);
    area += other.area;
    sceneArea += other.sceneArea;
    flipped += other.flipped;
    return *this;
}

LayoutMeasures measureLayout(const UVLayout& layout, std::span<const Vec3d> positions)
{
    LayoutMeasures measures;
    for (std::size_t t = 0; t < layout.triangleCount(); ++t) {
        if (layout.islandOfTriangle[t] < 0)
            continue;
        for (std::size_t k = 0; k < 3; ++k)
            measures.bounds.add(layout.point(t, k));
        measures.area += std::abs(signedArea(layout, t));
        measures.sceneArea += areaInScene(positions.subspan(3 * t, 3));
    }
    return measures;
}

} // namespace uvtool
