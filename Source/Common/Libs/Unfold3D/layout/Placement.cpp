#include "Unfold3D/layout/Placement.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace unfold3d
{

namespace
{

/// Correlations below this share say nothing about a direction.
constexpr double leastCorrelation = 0.1;
/// Distance of boxes in rows, as a share of the square root of their common area.
constexpr double rowGapShare = 0.01;

/// How the edges of one layout lie to those of another layout or to an axis: sums over all edges
/// of all triangles, as complex numbers.
struct Correlation
{
    double re = 0.0;
    double im = 0.0;
    double squaredA = 0.0;
    double squaredB = 0.0;

    void add(Vec2 a, Vec2 b)
    {
        re += dot(a, b);
        im += cross(a, b);
        squaredA += dot(a, a);
        squaredB += dot(b, b);
    }
    bool isClear(double scaleB) const
    {
        return std::hypot(re, im) > leastCorrelation * std::sqrt(squaredA) * std::sqrt(scaleB);
    }
};

template <class EdgeInTarget>
Correlation correlate(const IslandMesh& mesh, std::span<const Vec2> uv, EdgeInTarget edgeInTarget)
{
    Correlation sum;
    for (const Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto from = static_cast<std::size_t>(t[i]);
            const auto to = static_cast<std::size_t>(t[(i + 1) % 3]);
            sum.add(uv[to] - uv[from], edgeInTarget(from, to));
        }
    return sum;
}

void turnBy(const Correlation& angle, std::vector<Vec2>& uv)
{
    const double norm = std::hypot(angle.re, angle.im);
    const Vec2 turn{angle.re / norm, angle.im / norm};
    for (Vec2& p : uv)
        p = {turn.x * p.x - turn.y * p.y, turn.x * p.y + turn.y * p.x};
}

bool turnLikeOld(const IslandMesh& mesh, std::span<const Vec2> old, std::vector<Vec2>& uv)
{
    if (old.empty())
        return false;
    const Correlation likeness =
        correlate(mesh, uv, [&](std::size_t from, std::size_t to) { return old[to] - old[from]; });
    if (!likeness.isClear(likeness.squaredB))
        return false;
    turnBy(likeness, uv);
    return true;
}

struct AxisRule
{
    double Vec3::*axis;
    Vec2 direction;
};

void turnByAxes(const IslandMesh& mesh, std::vector<Vec2>& uv)
{
    constexpr AxisRule rules[] = {
        {&Vec3::y, {0.0, 1.0}}, {&Vec3::z, {0.0, 1.0}}, {&Vec3::x, {1.0, 0.0}}};
    double squaredEdges = 0.0;
    Correlation sums[3];
    for (std::size_t k = 0; k < 3; ++k) {
        sums[k] = correlate(mesh, uv, [&](std::size_t from, std::size_t to) {
            const Vec3 edge = mesh.positions[to] - mesh.positions[from];
            return edge.*rules[k].axis * rules[k].direction;
        });
        squaredEdges += sums[k].squaredB;
    }
    for (const Correlation& sum : sums)
        if (sum.isClear(squaredEdges)) {
            turnBy(sum, uv);
            return;
        }
}

} // namespace

UVBox boxAround(std::span<const Vec2> uv)
{
    UVBox box;
    if (!uv.empty())
        box = {uv.front(), uv.front()};
    for (const Vec2 p : uv) {
        box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y)};
        box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y)};
    }
    return box;
}

void turnToExpectedSide(const IslandMesh& mesh, std::span<const Vec2> old, std::vector<Vec2>& uv)
{
    if (!turnLikeOld(mesh, old, uv))
        turnByAxes(mesh, uv);
}

void moveMiddleTo(Vec2 middle, int triangleCount, std::vector<Vec2>& uv)
{
    const UVBox box = boxAround(uv);
    const double side = std::max(box.width(), box.height());
    // A float has 24 digits, 10 of them are for a thousandth of a mean edge.
    const double farthest = std::ldexp(side, 24 - 10) / std::sqrt(triangleCount);
    const double distance = std::max(std::abs(middle.x), std::abs(middle.y));
    if (distance > farthest)
        middle = (farthest / distance) * middle;
    const Vec2 move = middle - box.middle();
    for (Vec2& p : uv)
        p += move;
}

void layInRows(std::span<std::vector<Vec2>* const> islands)
{
    std::vector<UVBox> boxes;
    double area = 0.0;
    for (const std::vector<Vec2>* island : islands) {
        boxes.push_back(boxAround(*island));
        area += boxes.back().width() * boxes.back().height();
    }
    std::vector<std::size_t> order(islands.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return boxes[a].height() > boxes[b].height();
    });

    const double rowWidth = std::sqrt(area);
    const double gap = rowGapShare * rowWidth;
    Vec2 corner;
    double rowHeight = 0.0;
    for (const std::size_t i : order) {
        if (corner.x > 0.0 && corner.x + boxes[i].width() > rowWidth) {
            corner = {0.0, corner.y + rowHeight + gap};
            rowHeight = 0.0;
        }
        for (Vec2& p : *islands[i])
            p += corner - boxes[i].low;
        corner.x += boxes[i].width() + gap;
        rowHeight = std::max(rowHeight, boxes[i].height());
    }
}

} // namespace unfold3d
