#include "document/Triangulate.h"

#include "document/Vec3Math.h"

#include <cmath>
#include <span>

namespace uvtool
{
namespace
{

/// A triangle counts as properly turned when its area has at least this share of the polygon's:
/// well above the rounding of the cross products, well below any triangle worth having.
constexpr double leastAreaShare = 1e-9;

using Corners = std::span<const Vec3d>;

/// Twice the area of the polygon along its mean normal (Newell), relative to the first corner.
Vec3d polygonNormal(Corners corners)
{
    Vec3d sum{};
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const Vec3d part = areaNormal(corners[0], corners[i], corners[i + 1]);
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += part[k];
    }
    return sum;
}

/// Cuts one polygon after another; keeps its buffers.
class PolygonCutter
{
public:
    explicit PolygonCutter(std::vector<std::uint32_t>& triangles) : triangles_(triangles) {}

    void cut(Corners corners, std::uint32_t firstCorner)
    {
        corners_ = corners;
        firstCorner_ = firstCorner;
        normal_ = polygonNormal(corners);
        leastTurn_ = leastAreaShare * dot(normal_, normal_);
        if (corners.size() == 3 || isFanFromFirst())
            emitFan();
        else
            clipEars();
    }

private:
    double turn(std::size_t a, std::size_t b, std::size_t c) const
    {
        return dot(areaNormal(corners_[a], corners_[b], corners_[c]), normal_);
    }

    bool isFanFromFirst() const
    {
        for (std::size_t i = 1; i + 1 < corners_.size(); ++i) {
            if (!(turn(0, i, i + 1) > leastTurn_))
                return false;
        }
        return true;
    }

    void emit(std::size_t a, std::size_t b, std::size_t c)
    {
        for (const std::size_t corner : {a, b, c})
            triangles_.push_back(firstCorner_ + static_cast<std::uint32_t>(corner));
    }

    void emitFan()
    {
        for (std::size_t i = 1; i + 1 < corners_.size(); ++i)
            emit(0, i, i + 1);
    }

    bool containsAnother(std::size_t before, std::size_t ear, std::size_t after) const
    {
        for (const std::size_t other : left_) {
            if (other == before || other == ear || other == after)
                continue;
            if (turn(before, ear, other) >= 0 && turn(ear, after, other) >= 0 &&
                turn(after, before, other) >= 0)
                return true;
        }
        return false;
    }

    /// Takes ears off until a triangle is left. A polygon that crosses itself or has no area may
    /// run out of ears; the rest is then cut as a fan, so that the count of triangles holds.
    void clipEars()
    {
        left_.resize(corners_.size());
        for (std::size_t i = 0; i < left_.size(); ++i)
            left_[i] = i;

        std::size_t at = 0;
        std::size_t without = 0;
        while (left_.size() > 3 && without < left_.size()) {
            const std::size_t n = left_.size();
            const std::size_t before = left_[(at + n - 1) % n];
            const std::size_t ear = left_[at % n];
            const std::size_t after = left_[(at + 1) % n];
            if (turn(before, ear, after) > leastTurn_ && !containsAnother(before, ear, after)) {
                emit(before, ear, after);
                left_.erase(left_.begin() + static_cast<std::ptrdiff_t>(at % n));
                at %= n;
                without = 0;
            } else {
                at = (at + 1) % n;
                ++without;
            }
        }
        for (std::size_t i = 1; i + 1 < left_.size(); ++i)
            emit(left_[0], left_[i], left_[i + 1]);
    }

    std::vector<std::uint32_t>& triangles_;
    std::vector<std::size_t> left_;
    Corners corners_;
    std::uint32_t firstCorner_ = 0;
    Vec3d normal_{};
    double leastTurn_ = 0;
};

} // namespace

std::vector<std::uint32_t> trianglesOfPolygon(std::span<const Vec3d> corners)
{
    std::vector<std::uint32_t> triangles;
    if (corners.size() >= 3)
        PolygonCutter(triangles).cut(corners, 0);
    return triangles;
}

void triangulatePolygons(DocumentGeometry& geometry)
{
    const std::size_t triangleCount = geometry.cornerCount() - 2 * geometry.polygonCount();
    geometry.triangles.clear();
    geometry.triangles.reserve(3 * triangleCount);
    geometry.polygonOfTriangle.clear();
    geometry.polygonOfTriangle.reserve(triangleCount);

    PolygonCutter cutter(geometry.triangles);
    std::vector<Vec3d> corners;
    for (std::size_t p = 0; p < geometry.polygonCount(); ++p) {
        const std::uint32_t first = geometry.polygonOffsets[p];
        const std::uint32_t end = geometry.polygonOffsets[p + 1];
        corners.clear();
        for (std::uint32_t c = first; c < end; ++c)
            corners.push_back(geometry.positions.at(c));
        cutter.cut(corners, first);
        geometry.polygonOfTriangle.resize(geometry.triangles.size() / 3,
                                          static_cast<std::uint32_t>(p));
    }
}

} // namespace uvtool
