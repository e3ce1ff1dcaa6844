#include "Unfold3D/layout/Placement.h"

#include "Unfold3D/base/RestTriangle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace unfold3d
{

namespace
{

/// A direction that comes to less than this share of what it could be says nothing.
constexpr double leastClearness = 0.1;
/// Distance of boxes in rows, as a share of the square root of their common area.
constexpr double rowGapShare = 0.01;

/// Gradient in the layout of a function that is linear over a triangle, times twice the triangle's
/// area there. values [corner]
Vec2 scaledGradient(const std::array<Vec2, 3>& corners, const std::array<double, 3>& values)
{
    Vec2 sum;
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec2 opposite = corners[(i + 2) % 3] - corners[(i + 1) % 3];
        sum += values[i] * Vec2{-opposite.y, opposite.x};
    }
    return sum;
}

/// Calls visit(corners in the layout, vertices, weight) for all triangles. The weights are shares
/// of the area in space, divided by twice the area in the layout: what makes a mean over the
/// surface of scaled gradients.
template <class Visit>
void forEachTriangle(const IslandMesh& mesh, std::span<const Vec2> uv, const Visit& visit)
{
    double total = 0.0;
    for (int t = 0; t < mesh.triangleCount(); ++t)
        total += restTriangle(mesh, t).area();
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const Triangle& vertices = mesh.triangles[static_cast<std::size_t>(t)];
        std::array<Vec2, 3> corners;
        for (std::size_t i = 0; i < 3; ++i)
            corners[i] = uv[static_cast<std::size_t>(vertices[i])];
        const double flat = doubleArea(corners[0], corners[1], corners[2]);
        if (flat > 0.0)
            visit(corners, vertices, restTriangle(mesh, t).area() / total / flat);
    }
}

template <class Value>
std::array<double, 3> valuesAt(const Triangle& vertices, const Value& value)
{
    return {value(static_cast<std::size_t>(vertices[0])),
            value(static_cast<std::size_t>(vertices[1])),
            value(static_cast<std::size_t>(vertices[2]))};
}

/// Turns the layout so that the direction `from`, of any length, comes to lie on `to`.
void turn(Vec2 from, Vec2 to, std::vector<Vec2>& uv)
{
    const Vec2 product{dot(from, to), cross(from, to)};
    const Vec2 unit = (1.0 / length(product)) * product;
    for (Vec2& p : uv)
        p = {unit.x * p.x - unit.y * p.y, unit.x * p.y + unit.y * p.x};
}

/// The mean turn from the layout to the old one, as far as that was a similar map.
bool turnLikeOld(const IslandMesh& mesh, std::span<const Vec2> old, std::vector<Vec2>& uv)
{
    if (old.empty())
        return false;
    Vec2 meanTurn;
    double largest = 0.0;
    forEachTriangle(mesh, uv, [&](const auto& corners, const Triangle& vertices, double weight) {
        const Vec2 u =
            weight *
            scaledGradient(corners, valuesAt(vertices, [&](std::size_t v) { return old[v].x; }));
        const Vec2 v =
            weight *
            scaledGradient(corners, valuesAt(vertices, [&](std::size_t i) { return old[i].y; }));
        meanTurn += 0.5 * Vec2{u.x + v.y, v.x - u.y};
        largest += std::sqrt(0.5 * (dot(u, u) + dot(v, v)));
    });
    if (!(length(meanTurn) > leastClearness * largest))
        return false;
    turn({1.0, 0.0}, meanTurn, uv);
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
    for (const AxisRule& rule : rules) {
        Vec2 rise;
        forEachTriangle(
            mesh, uv, [&](const auto& corners, const Triangle& vertices, double weight) {
                rise += weight * scaledGradient(corners, valuesAt(vertices, [&](std::size_t v) {
                                                    return mesh.positions[v].*rule.axis;
                                                }));
            });
        if (length(rise) > leastClearness) { // 1 for a surface in which the axis lies
            turn(rise, rule.direction, uv);
            return;
        }
    }
}

} // namespace

Box2 boxAround(std::span<const Vec2> uv)
{
    Box2 box;
    for (const Vec2 p : uv)
        box.add(p);
    return box;
}

void turnToExpectedSide(const IslandMesh& mesh, std::span<const Vec2> old, std::vector<Vec2>& uv)
{
    if (!turnLikeOld(mesh, old, uv))
        turnByAxes(mesh, uv);
}

void moveMiddleTo(Vec2 middle, int triangleCount, std::vector<Vec2>& uv)
{
    const Box2 box = boxAround(uv);
    const double side = std::max(box.width(), box.height());
    // A float has 24 digits, 10 of them are for a thousandth of a mean edge.
    const double farthest = std::ldexp(side, 24 - 10) / std::sqrt(triangleCount);
    const double distance = std::max(std::abs(middle.x), std::abs(middle.y));
    if (distance > farthest)
        middle = (farthest / distance) * middle;
    const Vec2 move = middle - box.centre();
    for (Vec2& p : uv)
        p += move;
}

void layInRows(std::span<std::vector<Vec2>* const> islands)
{
    std::vector<Box2> boxes;
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
