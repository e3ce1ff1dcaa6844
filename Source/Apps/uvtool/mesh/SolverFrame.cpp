#include "mesh/SolverFrame.h"

#include "document/Box3.h"
#include "document/Transform.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// Points whose coordinates are at most this many times the size of their box stay where they are:
/// they lose two bits of 24 to the distance.
constexpr double farFromOrigin = 4.0;

} // namespace

SolverFrame::SolverFrame(std::span<const Vec3d> points)
{
    if (points.empty())
        return;
    Box3<double> box;
    for (const Vec3d& point : points)
        box.add(point);
    double size = 0;
    double farthest = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        size = std::max(size, box.hi[k] - box.lo[k]);
        farthest = std::max({farthest, std::abs(box.lo[k]), std::abs(box.hi[k])});
    }
    if (farthest > farFromOrigin * size) {
        for (std::size_t k = 0; k < 3; ++k)
            origin_[k] = box.lo[k] + 0.5 * (box.hi[k] - box.lo[k]);
    }
    if (size > 0)
        exponent_ = -std::ilogb(size);
}

SolverFrame SolverFrame::doubled(int times) const
{
    SolverFrame larger = *this;
    larger.exponent_ += times;
    return larger;
}

Vec3f SolverFrame::toFrame(const Vec3d& point) const
{
    Vec3f out{};
    for (std::size_t k = 0; k < 3; ++k)
        out[k] = static_cast<float>(std::ldexp(point[k] - origin_[k], exponent_));
    return out;
}

FramedPoints intoFrame(std::span<const Vec3d> points)
{
    FramedPoints framed{SolverFrame(points), {}};
    framed.points.reserve(points.size());
    for (const Vec3d& point : points)
        framed.points.push_back(framed.frame.toFrame(point));
    return framed;
}

std::vector<Vec3d> positionsOfCorners(const DocumentGeometry& geometry,
                                      std::span<const std::uint32_t> corners)
{
    std::vector<Vec3d> positions;
    positions.reserve(corners.size());
    for (const std::uint32_t corner : corners)
        positions.push_back(geometry.positions.at(corner));
    return positions;
}

std::vector<Vec3d> scenePositionsOfCorners(const DocumentGeometry& geometry,
                                           std::span<const std::uint32_t> corners)
{
    std::vector<Vec3d> positions = positionsOfCorners(geometry, corners);
    for (Vec3d& position : positions)
        position = toScene(geometry.toWorld, position);
    return positions;
}

std::vector<Vec3d> scenePositions(const DocumentGeometry& geometry)
{
    std::vector<std::uint32_t> cornerOfPosition(geometry.positions.values.size(), 0);
    for (std::uint32_t c = 0; c < geometry.cornerCount(); ++c)
        cornerOfPosition[geometry.positions.ofCorner[c]] = c;
    return scenePositionsOfCorners(geometry, cornerOfPosition);
}

} // namespace uvtool
