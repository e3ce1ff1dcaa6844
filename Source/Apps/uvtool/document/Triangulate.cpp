#include "document/Triangulate.h"

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

Vec3d minus(const Vec3d& a, const Vec3d& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vec3d cross(const Vec3d& a, const Vec3d& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(const Vec3d& a, const Vec3d& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// Twice the area of the polygon along its mean normal (Newell), relative to the first corner.
Vec3d areaNormal(Corners corners)
{
    Vec3d sum{};
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const Vec3d part = cross(minus(corners[i], corners[0]), minus(corners[i + 1], corners[0]));
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += part[k];
    }
    return sum;
}

/// Cuts one polygon after another; keeps its buffers.
class PolygonCutter
{
public:
    explicit PolygonCutter(std::vector<std::uint32_t>& triangles) : _triangles(triangles) {}

    void cut(Corners corners, std::uint32_t firstCorner)
    {
        _corners = corners;
        _firstCorner = firstCorner;
        _normal = areaNormal(corners);
        _leastTurn = leastAreaShare * dot(_normal, _normal);
        if (corners.size() == 3 || isFanFromFirst())
            emitFan();
        else
            clipEars();
    }

private:
    double turn(std::size_t a, std::size_t b, std::size_t c) const
    {
        return dot(cross(minus(_corners[b], _corners[a]), minus(_corners[c], _corners[a])),
                   _normal);
    }

    bool isFanFromFirst() const
    {
        for (std::size_t i = 1; i + 1 < _corners.size(); ++i) {
            if (!(turn(0, i, i + 1) > _leastTurn))
                return false;
        }
        return true;
    }

    void emit(std::size_t a, std::size_t b, std::size_t c)
    {
        for (const std::size_t corner : {a, b, c})
            _triangles.push_back(_firstCorner + static_cast<std::uint32_t>(corner));
    }

    void emitFan()
    {
        for (std::size_t i = 1; i + 1 < _corners.size(); ++i)
            emit(0, i, i + 1);
    }

    bool containsAnother(std::size_t before, std::size_t ear, std::size_t after) const
    {
        for (const std::size_t other : _left) {
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
        _left.resize(_corners.size());
        for (std::size_t i = 0; i < _left.size(); ++i)
            _left[i] = i;

        std::size_t at = 0;
        std::size_t without = 0;
        while (_left.size() > 3 && without < _left.size()) {
            const std::size_t n = _left.size();
            const std::size_t before = _left[(at + n - 1) % n];
            const std::size_t ear = _left[at % n];
            const std::size_t after = _left[(at + 1) % n];
            if (turn(before, ear, after) > _leastTurn && !containsAnother(before, ear, after)) {
                emit(before, ear, after);
                _left.erase(_left.begin() + static_cast<std::ptrdiff_t>(at % n));
                at %= n;
                without = 0;
            } else {
                at = (at + 1) % n;
                ++without;
            }
        }
        for (std::size_t i = 1; i + 1 < _left.size(); ++i)
            emit(_left[0], _left[i], _left[i + 1]);
    }

    std::vector<std::uint32_t>& _triangles;
    std::vector<std::size_t> _left;
    Corners _corners;
    std::uint32_t _firstCorner = 0;
    Vec3d _normal{};
    double _leastTurn = 0;
};

} // namespace

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
