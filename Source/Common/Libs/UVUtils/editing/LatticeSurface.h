#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/editing/LatticeGrid.h"

#include <array>
#include <span>
#include <vector>

/// Two doubles that are worked on in one go, in the vector types of GCC and Clang. Each lane gives
/// what the same operation on a single double gives.
using DoubleLanes = double __attribute__((vector_size(16)));

/// The Bézier surface of the control points of a lattice, evaluated for a few points at a time.
///
/// A tensor product in Bernstein form: G. Farin, Curves and Surfaces for CAGD, chapter on tensor
/// product Bézier surfaces. The sums run over u first, then over v, each in ascending order; what
/// comes out for a point does not depend on the other ones.
class LatticeSurface
{
public:
    static constexpr unsigned int LanesPerRegister = 2;
    static constexpr unsigned int Registers = 4;
    static constexpr unsigned int PointCount = LanesPerRegister * Registers;

    /// One number for each of the points.
    using Numbers = std::array<DoubleLanes, Registers>;
    /// u and v of each of the points.
    struct Points
    {
        Numbers u{};
        Numbers v{};
    };

    /// controlPoints  [resU * resV]  row by row, u fastest
    LatticeSurface(const LatticeGrid& grid, std::span<const osg::Vec2f> controlPoints);

    /// Where the surface takes UVs.
    [[nodiscard]] Points evaluate(const Points& uvs) const;

private:
    /// The control points along u or v.
    struct Direction
    {
        Direction(double low, double high, const std::vector<unsigned int>& coefficients);
        double low;                    ///< where the parameter is 0
        double extent;                 ///< how far on it is 1
        std::vector<double> binomials; ///< [control points]
    };
    using Bernstein = std::array<Numbers, LatticeGrid::MaxRes>;

    static void fillBernstein(const Direction& direction, const Numbers& values, Bernstein& b);

    Direction u_;
    Direction v_;
    std::vector<std::array<double, 2>> controlPoints_;
};
