#pragma once

#include "MeshUtils/SortedTriangle.h"

#include <algorithm>
#include <array>
#include <limits>

// The point of a triangle that is closest to a given one, by the regions of its plane (see
// C. Ericson, "Real-Time Collision Detection", 2005, section 5.1.5), with two departures: a point
// beside the triangle is measured to the edges and corners alone, so that neighbours agree to the
// last bit on what they share; and a sliver counts as its edges, since its normal is noise.

/// Where a triangle is closest to a point.
struct TriangleFoot
{
    double squareDistance = std::numeric_limits<double>::infinity();
    std::array<double, 3> weights = {0, 0, 0}; ///< of the sorted corners
};

namespace closest
{

/// A triangle with a smaller sine of its angle at the first corner is a sliver, squared.
inline constexpr double SliverSine = 0x1p-44;
/// A point this near to the plane of a triangle lies on it, as a part of the longest edge, squared.
inline constexpr double OnPlane = 0x1p-88;

/// The point and the triangle as seen from the corners.
struct View
{
    View(const Vec3d& point, const SortedTriangle& triangle)
        : fromA(point - vectorTo(triangle.corners[0])),
          ab(vectorTo(triangle.corners[1]) - vectorTo(triangle.corners[0])),
          ac(vectorTo(triangle.corners[2]) - vectorTo(triangle.corners[0])), normal(ab.cross(ac)),
          squareNormal(normal.squareLength()), height(fromA.dot(normal)),
          squareAb(ab.squareLength()), squareAc(ac.squareLength())
    {}

    [[nodiscard]] bool isSliver() const { return squareNormal <= SliverSine * squareAb * squareAc; }
    [[nodiscard]] double squareExtent() const { return std::max(squareAb, squareAc); }

    Vec3d fromA;
    Vec3d ab;
    Vec3d ac;
    Vec3d normal;
    double squareNormal;
    double height; ///< above the plane, times the length of the normal
    double squareAb;
    double squareAc;
};

/// Takes the closest point of the edge from corner i to corner j if it is nearer than the foot.
inline void takeEdge(const Vec3d& point, const SortedTriangle& triangle, unsigned int i,
                     unsigned int j, TriangleFoot& foot)
{
    const Vec3d start = vectorTo(triangle.corners[i]);
    const Vec3d end = vectorTo(triangle.corners[j]);
    const Vec3d edge = end - start;
    const Vec3d fromStart = point - start;
    const double along = fromStart.dot(edge);
    const double squareEdge = edge.squareLength();
    double t = 0;
    double squareDistance = 0;
    if (along <= EdgeSnap * squareEdge) {
        squareDistance = fromStart.squareLength();
    } else if (along >= (1 - EdgeSnap) * squareEdge) {
        t = 1;
        squareDistance = (point - end).squareLength();
    } else {
        t = along / squareEdge;
        squareDistance = (fromStart - edge * t).squareLength();
    }
    if (squareDistance >= foot.squareDistance)
        return;
    foot.squareDistance = squareDistance;
    foot.weights = {0, 0, 0};
    foot.weights[i] = 1 - t;
    foot.weights[j] = t;
}

/// Whether the plane alone is farther away than a distance, with room for all rounding.
inline bool isPlaneBeyond(const View& view, double squareDistance)
{
    const double limit = squareDistance * (1 + 0x1p-13) + 0x1p-44 * view.squareExtent();
    return view.height * view.height > view.squareNormal * limit;
}

} // namespace closest

/// The point of a triangle that is closest to a given one. A triangle that is surely farther away
/// than a squared distance may come back at infinity; the rest of the answer does not depend on
/// that bound. Good for all finite floats: none of the products can leave the range of a double.
[[gnu::always_inline]] inline TriangleFoot
closestOnTriangle(const Vec3d& point, const SortedTriangle& triangle,
                  double beyond = std::numeric_limits<double>::infinity())
{
    const closest::View view(point, triangle);
    TriangleFoot foot;
    const bool isSliver = view.isSliver();
    if (!isSliver && closest::isPlaneBeyond(view, beyond))
        return foot;
    const double b = view.fromA.cross(view.ac).dot(view.normal);
    const double c = view.ab.cross(view.fromA).dot(view.normal);
    const double a = view.squareNormal - b - c;
    const double onEdge = EdgeSnap * view.squareNormal;
    if (!isSliver && a > onEdge && b > onEdge && c > onEdge) {
        const double squareDistance = view.height * view.height / view.squareNormal;
        const bool isOn = squareDistance < closest::OnPlane * view.squareExtent();
        return {isOn ? 0 : squareDistance,
                {a / view.squareNormal, b / view.squareNormal, c / view.squareNormal}};
    }
    if (isSliver || c <= onEdge)
        closest::takeEdge(point, triangle, 0, 1, foot);
    if (isSliver || b <= onEdge)
        closest::takeEdge(point, triangle, 0, 2, foot);
    if (isSliver || a <= onEdge)
        closest::takeEdge(point, triangle, 1, 2, foot);
    return foot;
}

/// Finds the closest of the triangles that are offered to it, in any order; of equally close ones
/// that of the lowest number.
class ClosestSearch
{
public:
    explicit ClosestSearch(const osg::Pnt3f& point) : point_(vectorTo(point)) {}

    /// Returns whether the triangle is the closest so far.
    bool offer(const SortedTriangle& triangle)
    {
        if (triangle.number == number())
            return false; // a guess that turned out right
        const TriangleFoot foot = closestOnTriangle(point_, triangle, foot_.squareDistance);
        const bool isTie = foot.squareDistance == foot_.squareDistance;
        if (!(foot.squareDistance < foot_.squareDistance || (isTie && triangle.number < number())))
            return false;
        foot_ = foot;
        triangle_ = triangle;
        return true;
    }

    [[nodiscard]] bool hasFound() const { return number() >= 0; }
    [[nodiscard]] double squareDistance() const { return foot_.squareDistance; }
    [[nodiscard]] const SortedTriangle& triangle() const { return triangle_; }
    [[nodiscard]] const std::array<double, 3>& weights() const { return foot_.weights; }

private:
    [[nodiscard]] int number() const { return triangle_.number; }

    Vec3d point_;
    TriangleFoot foot_;
    SortedTriangle triangle_;
};
