#pragma once

#include "document/Document.h"

#include <span>
#include <vector>

namespace uvtool
{

/// Takes positions to a box near 1 at the origin, where single precision and the solver's
/// tolerances are at home.
///
/// The scale is a power of two, so that it costs no digit. Points are moved only when they lie far
/// from the origin for the size of their box; the move happens in doubles, before the rounding.
class SolverFrame
{
public:
    explicit SolverFrame(std::span<const Vec3d> points);

    /// The same with a box so many times doubled, for operations whose tolerances are at home in
    /// larger ones.
    SolverFrame doubled(int times) const;

    Vec3f toFrame(const Vec3d& point) const;

    /// frame = scene * 2^exponent. A length of the frame is brought back with ldexp(x, -exponent).
    int exponent() const { return exponent_; }

private:
    Vec3d origin_{};
    int exponent_ = 0;
};

/// Points as single precision holds them in a frame of theirs.
struct FramedPoints
{
    SolverFrame frame;
    std::vector<Vec3f> points;
};

FramedPoints intoFrame(std::span<const Vec3d> points);

/// Positions of the given polygon corners, in the geometry's own space or in the scene's.
std::vector<Vec3d> positionsOfCorners(const DocumentGeometry& geometry,
                                      std::span<const std::uint32_t> corners);
std::vector<Vec3d> scenePositionsOfCorners(const DocumentGeometry& geometry,
                                           std::span<const std::uint32_t> corners);

/// [number of the position] All of a geometry in the scene's space; for one that no corner has
/// another one of it.
std::vector<Vec3d> scenePositions(const DocumentGeometry& geometry);

} // namespace uvtool
