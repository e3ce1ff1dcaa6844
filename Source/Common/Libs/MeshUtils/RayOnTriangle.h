#pragma once

#include "MeshUtils/SortedTriangle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

// Where a ray meets a triangle, after S. Woop, C. Benthin and I. Wald, "Watertight Ray/Triangle
// Intersection", JCGT 2(1), 2013, in double: the corners are sheared so that the ray is the z axis,
// and the signs of three edge functions tell inside from outside. Departures: what is within
// EdgeSnap of an edge counts as on it, for both triangles at the edge, and is measured on the edge
// alone, so that their distances agree to the last bit; and a triangle that the ray sees as a line
// is met at an edge, since its weights are noise.

/// A ray of unit direction, ready to be met.
class Ray
{
public:
    /// direction  of any length but zero
    Ray(const osg::Pnt3f& origin, const osg::Vec3f& direction)
        : origin_(vectorTo(origin)), direction_(direction[0], direction[1], direction[2])
    {
        direction_ *= 1 / direction_.length();
        for (unsigned int i = 0; i < 3; ++i)
            if (std::abs(direction_[i]) < Straight)
                direction_[i] = 0;
        for (unsigned int i = 1; i < 3; ++i)
            if (std::abs(direction_[i]) > std::abs(direction_[along_]))
                along_ = i;
    }

    [[nodiscard]] const Vec3d& direction() const { return direction_; }

    /// A corner with the origin of the ray at zero and its direction along z, which counts in
    /// lengths along the ray.
    [[nodiscard]] Vec3d sheared(const osg::Pnt3f& corner) const
    {
        const Vec3d from = vectorTo(corner) - origin_;
        const unsigned int u = (along_ + 1) % 3;
        const unsigned int v = (along_ + 2) % 3;
        const double z = from[along_] / direction_[along_];
        return Vec3d(from[u] - direction_[u] * z, from[v] - direction_[v] * z, z);
    }

private:
    /// A component below this is zero, in double as well as where boxes are compared in float.
    static constexpr double Straight = 1e-30;

    Vec3d origin_;
    Vec3d direction_;
    unsigned int along_ = 0; ///< the axis of the largest component
};

/// Where a ray meets a triangle.
struct RayHit
{
    double distance = std::numeric_limits<double>::infinity(); ///< below 0 behind the origin
    std::array<double, 3> weights = {0, 0, 0};                 ///< of the sorted corners
};

namespace hit
{

/// Twice the area that an edge spans with the ray, as the ray sees it.
inline double edgeFunction(const Vec3d& from, const Vec3d& to)
{
    return from.x() * to.y() - from.y() * to.x();
}

/// The hit of a ray that meets the edge from corner i to corner j.
inline RayHit onEdge(const std::array<Vec3d, 3>& corners, unsigned int i, unsigned int j)
{
    const double u = corners[j].x() - corners[i].x();
    const double v = corners[j].y() - corners[i].y();
    const double along = -(corners[i].x() * u + corners[i].y() * v);
    const double squareEdge = u * u + v * v;
    RayHit result;
    if (along <= EdgeSnap * squareEdge) {
        result.distance = corners[i].z();
        result.weights[i] = 1;
    } else if (along >= (1 - EdgeSnap) * squareEdge) {
        result.distance = corners[j].z();
        result.weights[j] = 1;
    } else {
        const double t = along / squareEdge;
        result.distance = corners[i].z() + t * (corners[j].z() - corners[i].z());
        result.weights[i] = 1 - t;
        result.weights[j] = t;
    }
    return result;
}

/// How far the corners are from the origin of the ray, and from the ray.
struct Extent
{
    double reach = 0;
    double width = 0;

    explicit Extent(const std::array<Vec3d, 3>& corners)
    {
        for (const Vec3d& corner : corners) {
            width = std::max({width, std::abs(corner.x()), std::abs(corner.y())});
            reach = std::max(reach, std::abs(corner.z()));
        }
        reach = std::max(reach, width);
    }
};

/// Below this part of reach times width the area that the ray sees leaves too little of the
/// weights.
constexpr double EdgeOn = 0x1p-24;
/// The rounding of corners as the ray sees them, as a part of their reach.
constexpr double Rounding = 0x1p-46;

/// The hit of a triangle that the ray sees as a line, by rounding inside of it or not: at the
/// nearest edge, if the ray does not pass beyond its ends.
inline RayHit onNearestEdge(const std::array<Vec3d, 3>& corners, double reach)
{
    constexpr std::array<std::array<unsigned int, 2>, 3> edges = {{{0, 1}, {0, 2}, {1, 2}}};
    RayHit nearest;
    double least = std::numeric_limits<double>::infinity();
    for (const auto [i, j] : edges) {
        const RayHit found = onEdge(corners, i, j);
        const Vec3d foot = corners[i] * found.weights[i] + corners[j] * found.weights[j];
        const double away = std::max(std::abs(foot.x()), std::abs(foot.y()));
        const bool isEnd = found.weights[i] == 1 || found.weights[j] == 1;
        if (away >= least || (isEnd && away > Rounding * reach))
            continue;
        least = away;
        nearest = found;
    }
    return nearest;
}

} // namespace hit

/// Where a ray, followed in both directions, meets a triangle, from either side. The distance is
/// infinite if it passes by; one in the triangle's plane may meet an edge or none.
inline RayHit meet(const Ray& ray, const SortedTriangle& triangle)
{
    const std::array<Vec3d, 3> corners = {ray.sheared(triangle.corners[0]),
                                          ray.sheared(triangle.corners[1]),
                                          ray.sheared(triangle.corners[2])};
    double a = hit::edgeFunction(corners[1], corners[2]);
    double b = hit::edgeFunction(corners[2], corners[0]);
    double c = hit::edgeFunction(corners[0], corners[1]);
    const double sum = a + b + c;
    if (sum == 0)
        return {};
    a /= sum;
    b /= sum;
    c /= sum;
    if (!(a >= -EdgeSnap && b >= -EdgeSnap && c >= -EdgeSnap))
        return {};
    const hit::Extent extent(corners);
    if (std::abs(sum) <= hit::EdgeOn * extent.reach * extent.width)
        return hit::onNearestEdge(corners, extent.reach);
    if (c <= EdgeSnap)
        return hit::onEdge(corners, 0, 1);
    if (b <= EdgeSnap)
        return hit::onEdge(corners, 0, 2);
    if (a <= EdgeSnap)
        return hit::onEdge(corners, 1, 2);
    return {a * corners[0].z() + b * corners[1].z() + c * corners[2].z(), {a, b, c}};
}

/// Finds the nearest of the triangles that are offered to it, in any order, that a ray meets from
/// its origin on and before a distance; of equally near ones that of the lowest number.
class RaySearch
{
public:
    RaySearch(const Ray& ray, float maxDistance) : ray_(ray), maxDistance_(maxDistance) {}

    /// Returns whether the triangle is the nearest so far.
    bool offer(const SortedTriangle& triangle)
    {
        const RayHit found = meet(ray_, triangle);
        if (!(found.distance >= 0 && static_cast<float>(found.distance) < maxDistance_))
            return false;
        const bool isTie = found.distance == hit_.distance;
        if (!(found.distance < hit_.distance || (isTie && triangle.number < triangle_.number)))
            return false;
        hit_ = found;
        triangle_ = triangle;
        return true;
    }

    [[nodiscard]] bool hasFound() const { return triangle_.number >= 0; }
    /// What a triangle has to be nearer than, or as near.
    [[nodiscard]] double limit() const
    {
        return hasFound() ? hit_.distance : static_cast<double>(maxDistance_);
    }
    [[nodiscard]] const SortedTriangle& triangle() const { return triangle_; }
    [[nodiscard]] const RayHit& hit() const { return hit_; }

private:
    Ray ray_;
    float maxDistance_;
    RayHit hit_;
    SortedTriangle triangle_;
};
