#pragma once

#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/parameterisation/LayoutEnergy.h"

#include <cmath>
#include <numbers>

namespace unfold3d
{

// The energy of one triangle (LayoutEnergy.h), with its gradient and Hessian in closed form (the
// eigensystem follows Smith, de Goes and Kim 2019): of lengths alone, as it mostly is,
//
//     energy = area * (s1^2 + s2^2 + 1/s1^2 + 1/s2^2)     (Smith and Schaefer 2015).

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
    Capped, ///< of lengths never steeper than the reweighted proxy of Rabinovich and others (2017):
            ///< far strides
    Exact   ///< Newton's, less its negative part: quick at the end
};

/// h and k of an energy F h(J) + k(J) per area, with two derivatives each.
struct EnergyTerms
{
    double h[3];
    double k[3];

    /// For J above 0.
    static EnergyTerms ofAngles(double det)
    {
        const double r = 1.0 / det;
        return {{2.0 * r, -2.0 * r * r, 4.0 * r * r * r}, {0.0, 0.0, 0.0}};
    }
    /// Of an energy that allows flips, for any J.
    static EnergyTerms withFlips(double det, const LayoutEnergy& energy)
    {
        if (energy.isConformal)
            return {{1.0, 0.0, 0.0}, {-2.0 * det, -2.0, 0.0}};
        const double softness = energy.softness;
        const double root = std::sqrt(det * det + softness * softness);
        // The sum cancels where J is negative.
        const double chi =
            det > 0.0 ? 0.5 * (det + root) : 0.5 * softness * softness / (root - det);
        const double relativeSlope = 1.0 / root; // chi' / chi
        const double r = 1.0 / chi;
        const double r1 = -r * relativeSlope;
        const double r2 = r * relativeSlope * relativeSlope * (1.0 + det * relativeSlope);
        const double square = det * det + 1.0;
        return {{r, r1, r2},
                {square * r, 2.0 * det * r + square * r1, 2.0 * r + 4.0 * det * r1 + square * r2}};
    }
};

/// How an energy per area changes with A = |a| and B = |b|, the sizes of a map's two parts.
struct PartDerivatives
{
    double slopeA;
    double slopeB;
    double aa; ///< second derivatives
    double ab;
    double bb;
    double twist; ///< slopeA / 2A, the curvature along a turn of a
    double flip;  ///< slopeB / 2B, the same of b

    /// F h(J) + k(J), where F = 2 (A^2 + B^2) and J = A^2 - B^2.
    PartDerivatives(const EnergyTerms& terms, double A, double B)
    {
        const double F = 2.0 * (A * A + B * B);
        const double byDet = F * terms.h[1] + terms.k[1];
        const double byDet2 = F * terms.h[2] + terms.k[2];
        twist = 2.0 * terms.h[0] + byDet;
        flip = 2.0 * terms.h[0] - byDet;
        slopeA = 2.0 * A * twist;
        slopeB = 2.0 * B * flip;
        aa = 2.0 * twist + 4.0 * A * A * (4.0 * terms.h[1] + byDet2);
        ab = -4.0 * A * B * byDet2;
        bb = 2.0 * flip + 4.0 * B * B * (byDet2 - 4.0 * terms.h[1]);
    }
    /// A mix of this with the energy of lengths, as its modes and their curvatures tell it.
    void mixWithLengths(double share, const double (&slopes)[2], const double (&curvatures)[4])
    {
        const auto mix = [share](double& own, double ofLengths) {
            own += share * (ofLengths - own);
        };
        mix(slopeA, slopes[0] + slopes[1]);
        mix(slopeB, slopes[0] - slopes[1]);
        mix(aa, curvatures[0] + curvatures[1]);
        mix(ab, curvatures[0] - curvatures[1]);
        mix(bb, curvatures[0] + curvatures[1]);
        mix(twist, curvatures[2]);
        mix(flip, curvatures[3]);
    }
};

/// The derivatives of a triangle's energy per area in the modes of its map: two stretches, each a
/// mix of the gradients of A and B, and the turns of a and of b.
struct ModeDerivatives
{
    double stretch[2][2] = {{1.0, 1.0}, {1.0, -1.0}}; ///< [mode][A, B]; these are s1 and s2
    double slope[2];                                  ///< of the stretches; turns have none
    double curvature[4];                              ///< the negative ones too

    ModeDerivatives(const TriangleMap& map, const LayoutEnergy& energy, Curvature kind)
    {
        const double A = length(map.a);
        const double B = length(map.b);
        if (energy.allowsFlips()) {
            setPrincipal(PartDerivatives(EnergyTerms::withFlips(map.det, energy), A, B));
            return;
        }
        setLengths(A + B, map.det, kind);
        if (energy.isLengthsOnly())
            return;
        PartDerivatives parts(EnergyTerms::ofAngles(map.det), A, B);
        parts.mixWithLengths(energy.lengths, slope, curvature);
        setPrincipal(parts);
    }

private:
    void setLengths(double s1, double det, Curvature kind)
    {
        const double s2 = det / s1; // |a| - |b| would cancel
        const auto slopeOf = [](double s) { return 2.0 * (s - 1.0 / (s * s * s)); };
        const auto curvatureOf = [kind](double s) {
            const double r = 1.0 / s;
            const double exact = 2.0 + 6.0 * r * r * r * r;
            const double secant = 2.0 * (1.0 + r * (1.0 + r * (1.0 + r)));
            return kind == Curvature::Capped ? std::fmin(exact, secant) : exact;
        };
        const double product = s1 * s2;
        const double cubedProduct = product * product * product;
        slope[0] = slopeOf(s1);
        slope[1] = slopeOf(s2);
        curvature[0] = curvatureOf(s1);
        curvature[1] = curvatureOf(s2);
        curvature[2] = 2.0 - 2.0 * (s1 * s1 - product + s2 * s2) / cubedProduct;
        curvature[3] = 2.0 + 2.0 * (s1 * s1 + product + s2 * s2) / cubedProduct;
        if (kind == Curvature::Capped)
            curvature[3] = std::fmin(curvature[3], std::fmax(curvature[0], curvature[1]));
    }
    /// The stretches along which the second derivatives don't mix.
    void setPrincipal(const PartDerivatives& parts)
    {
        // Jacobi's rotation.
        const double ratio = 0.5 * (parts.bb - parts.aa) / parts.ab;
        const double tangent =
            parts.ab == 0.0
                ? 0.0
                : std::copysign(1.0 / (std::abs(ratio) + std::sqrt(1.0 + ratio * ratio)), ratio);
        const double c = 1.0 / std::sqrt(1.0 + tangent * tangent);
        const double s = -tangent * c;
        const double mixed = 2.0 * c * s * parts.ab;
        stretch[0][0] = c;
        stretch[0][1] = s;
        stretch[1][0] = -s;
        stretch[1][1] = c;
        slope[0] = c * parts.slopeA + s * parts.slopeB;
        slope[1] = c * parts.slopeB - s * parts.slopeA;
        curvature[0] = c * c * parts.aa + mixed + s * s * parts.bb;
        curvature[1] = s * s * parts.aa - mixed + c * c * parts.bb;
        curvature[2] = parts.twist;
        curvature[3] = parts.flip;
    }
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

    TriangleDerivatives(const TriangleMetric& metric, const TriangleMap& map,
                        const LayoutEnergy& energy, Curvature kind);
};

inline TriangleDerivatives::TriangleDerivatives(const TriangleMetric& metric,
                                                const TriangleMap& map, const LayoutEnergy& energy,
                                                Curvature kind)
{
    const ModeDerivatives modes(map, energy, kind);
    for (int m = 0; m < 4; ++m)
        curvature[m] = metric.area * std::fmax(modes.curvature[m], 0.0);

    const double lengthA = length(map.a);
    const double lengthB = length(map.b);
    const Vec2 directionA = lengthA > 0.0 ? (1.0 / lengthA) * map.a : Vec2{1.0, 0.0};
    const Vec2 directionB = lengthB > 0.0 ? (1.0 / lengthB) * map.b : Vec2{1.0, 0.0};
    const Vec2 gradient1{metric.inverseBase, -metric.shear * metric.inverseHeight};
    const Vec2 gradient2{0.0, metric.inverseHeight};
    const Vec2 gradients[3] = {
        {-gradient1.x - gradient2.x, -gradient1.y - gradient2.y}, gradient1, gradient2};
    const double slope1 = metric.area * modes.slope[0];
    const double slope2 = metric.area * modes.slope[1];
    for (int corner = 0; corner < 3; ++corner) {
        // A corner's motion p changes a by p * conj(g) / 2 and b by p * g / 2, as complex numbers.
        const Vec2 g = gradients[corner];
        const Vec2 alongA{0.5 * (directionA.x * g.x - directionA.y * g.y),
                          0.5 * (directionA.x * g.y + directionA.y * g.x)};
        const Vec2 alongB{0.5 * (directionB.x * g.x + directionB.y * g.y),
                          0.5 * (directionB.y * g.x - directionB.x * g.y)};
        mode[0][corner] = modes.stretch[0][0] * alongA + modes.stretch[0][1] * alongB;
        mode[1][corner] = modes.stretch[1][0] * alongA + modes.stretch[1][1] * alongB;
        mode[2][corner] = {-std::numbers::sqrt2 * alongA.y, std::numbers::sqrt2 * alongA.x};
        mode[3][corner] = {-std::numbers::sqrt2 * alongB.y, std::numbers::sqrt2 * alongB.x};
        slope[corner] = slope1 * mode[0][corner] + slope2 * mode[1][corner];
    }
}

} // namespace unfold3d
