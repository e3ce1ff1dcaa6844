#pragma once

#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/base/Vec.h"

#include <cmath>

namespace unfold3d
{

// The symmetric Dirichlet energy of one triangle (Smith and Schaefer 2015), with its gradient and
// Hessian in closed form (the eigensystem follows Smith, de Goes and Kim 2019). With s1 >= s2 > 0,
// the singular values of the map from the rest triangle to the plane,
//
//     energy = area * (s1^2 + s2^2 + 1/s1^2 + 1/s2^2),    4 * area when nothing is distorted.

/// What of a rest triangle the energy needs. The map's columns are
///     (u1 - u0) * inverseBase    and    ((u2 - u0) - shear * (u1 - u0)) * inverseHeight.
struct TriangleMetric
{
    double inverseBase;
    double shear;
    double inverseHeight;
    double area;

    explicit TriangleMetric(const RestTriangle& rest)
        : inverseBase(1.0 / rest.bx), shear(rest.cx / rest.bx), inverseHeight(1.0 / rest.cy),
          area(rest.area())
    {}
};

/// p x q to the last bit or two even when the products nearly cancel (Kahan's scheme).
inline double accurateCross(Vec2 p, Vec2 q)
{
    const double left = p.x * q.y;
    const double right = p.y * q.x;
    const double difference = left - right;
    // Far from cancelling, the plain difference is good to ten digits.
    constexpr double cancelled = 1e-6;
    if (std::abs(difference) > cancelled * (std::abs(left) + std::abs(right)))
        return difference;
    const double rightError = std::fma(-p.y, q.x, right);
    return std::fma(p.x, q.y, -right) + rightError;
}

/// The map of one triangle, split into its similar part a and its antisimilar part b:
///     [a.x + b.x   b.y - a.y]
///     [a.y + b.y   a.x - b.x]
/// so that s1 = |a| + |b| and s2 = |a| - |b|.
struct TriangleMap
{
    Vec2 a;
    Vec2 b;
    double det; ///< s1 * s2

    TriangleMap(const TriangleMetric& metric, Vec2 edge1, Vec2 edge2)
    {
        const Vec2 column0 = metric.inverseBase * edge1;
        const Vec2 column1 = metric.inverseHeight * (edge2 - metric.shear * edge1);
        a = {0.5 * (column0.x + column1.y), 0.5 * (column0.y - column1.x)};
        b = {0.5 * (column0.x - column1.y), 0.5 * (column0.y + column1.x)};
        det = accurateCross(edge1, edge2) * metric.inverseBase * metric.inverseHeight;
    }
    /// s1^2 + s2^2
    double squaredNorm() const { return 2.0 * (dot(a, a) + dot(b, b)); }
};

/// Which curvature a step is computed with.
enum class Curvature
{
    Capped, ///< never steeper than the reweighted proxy of Rabinovich and others (2017): far
            ///< strides
    Exact   ///< Newton's, less its negative part: quick at the end
};

/// First and second derivatives of a triangle's energy by its three corners.
///
///   slope  [corner]                the gradient
///   mode   [mode][corner]          gradients of the four modes: two stretches, twist, flip
///   curvature [mode]               none negative
/// The Hessian's block of corners i and j is the sum of curvature[m] * mode[m][i] * mode[m][j]'.
struct TriangleDerivatives
{
    Vec2 slope[3];
    Vec2 mode[4][3];
    double curvature[4];

    TriangleDerivatives(const TriangleMetric& metric, const TriangleMap& map, Curvature kind);
};

inline TriangleDerivatives::TriangleDerivatives(const TriangleMetric& metric,
                                                const TriangleMap& map, Curvature kind)
{
    const double lengthA = length(map.a);
    const double lengthB = length(map.b);
    const double s1 = lengthA + lengthB;
    const double s2 = map.det / s1; // |a| - |b| would cancel
    const Vec2 directionA = (1.0 / lengthA) * map.a;
    const Vec2 directionB = lengthB > 0.0 ? (1.0 / lengthB) * map.b : Vec2{1.0, 0.0};

    const auto slopeOf = [](double s) { return 2.0 * (s - 1.0 / (s * s * s)); };
    const auto stretch = [kind](double s) {
        const double r = 1.0 / s;
        const double exact = 2.0 + 6.0 * r * r * r * r;
        const double secant = 2.0 * (1.0 + r * (1.0 + r * (1.0 + r)));
        return kind == Curvature::Capped ? std::fmin(exact, secant) : exact;
    };
    const double product = s1 * s2;
    const double cubedProduct = product * product * product;
    const double stretch1 = stretch(s1);
    const double stretch2 = stretch(s2);
    const double twist = 2.0 - 2.0 * (s1 * s1 - product + s2 * s2) / cubedProduct;
    double flip = 2.0 + 2.0 * (s1 * s1 + product + s2 * s2) / cubedProduct;
    if (kind == Curvature::Capped)
        flip = std::fmin(flip, std::fmax(stretch1, stretch2));
    curvature[0] = metric.area * stretch1;
    curvature[1] = metric.area * stretch2;
    curvature[2] = metric.area * std::fmax(twist, 0.0);
    curvature[3] = metric.area * flip;

    const Vec2 gradient1{metric.inverseBase, -metric.shear * metric.inverseHeight};
    const Vec2 gradient2{0.0, metric.inverseHeight};
    const Vec2 gradients[3] = {
        {-gradient1.x - gradient2.x, -gradient1.y - gradient2.y}, gradient1, gradient2};
    const double slope1 = metric.area * slopeOf(s1);
    const double slope2 = metric.area * slopeOf(s2);
    for (int corner = 0; corner < 3; ++corner) {
        // A corner's motion p changes a by p * conj(g) / 2 and b by p * g / 2, as complex numbers.
        const Vec2 g = gradients[corner];
        const Vec2 alongA{0.5 * (directionA.x * g.x - directionA.y * g.y),
                          0.5 * (directionA.x * g.y + directionA.y * g.x)};
        const Vec2 alongB{0.5 * (directionB.x * g.x + directionB.y * g.y),
                          0.5 * (directionB.y * g.x - directionB.x * g.y)};
        constexpr double squareRootOf2 = 1.41421356237309504880;
        mode[0][corner] = alongA + alongB;
        mode[1][corner] = alongA - alongB;
        mode[2][corner] = {-squareRootOf2 * alongA.y, squareRootOf2 * alongA.x};
        mode[3][corner] = {-squareRootOf2 * alongB.y, squareRootOf2 * alongB.x};
        slope[corner] = slope1 * mode[0][corner] + slope2 * mode[1][corner];
    }
}

} // namespace unfold3d
