#include "report/EditReport.h"

#include "document/Vec3Math.h"
#include "layout/TriangleMeasures.h"

#include <cmath>

namespace uvtool
{
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
        const auto corners = positions.subspan(3 * t, 3);
        measures.sceneArea += length(areaNormal(corners[0], corners[1], corners[2])) / 2;
    }
    return measures;
}

} // namespace uvtool
