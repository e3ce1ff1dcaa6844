#pragma once

#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/parameterisation/EliminationMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The parts of an energy of lengths and angles. Scaled by c, a layout has the energy of lengths
/// c^2 * stretch + shrink / c^2, and that of angles as before.
struct Distortion
{
    double stretch = 0.0; ///< area-weighted mean of s1^2 + s2^2
    double shrink = 0.0;  ///< of 1/s1^2 + 1/s2^2; infinite when a triangle is flipped
    double angles = 0.0;  ///< of 2 (s1/s2 + s2/s1); infinite when a triangle is flipped

    /// The mix with this share of lengths.
    double energy(double lengths = 1.0) const;
    /// The same at the best scale, and that scale.
    double bestEnergy(double lengths = 1.0) const;
    double bestScale() const;
};

/// Measures a layout ([column]). Linear.
Distortion measure(const EliminationMesh& mesh, std::span<const Vec2> uv);

/// An energy that allows flips, of a layout ([column]). Linear.
double energyWithFlips(const EliminationMesh& mesh, std::span<const Vec2> uv,
                       const LayoutEnergy& energy);

/// Adds the energy's gradient and its curvature to what stands in `gradient` ([column]) and
/// `hessian`. No triangle of the layout may be flipped, unless the energy allows it.
void addDerivatives(const EliminationMesh& mesh, std::span<const Vec2> uv,
                    const LayoutEnergy& energy, Curvature kind, std::span<Vec2> gradient,
                    BlockMatrix& hessian);

/// How far the layout can move along `direction` until the first triangle has no area left, as a
/// multiple of `direction`; infinite when none ever gets there.
double firstFlip(const EliminationMesh& mesh, std::span<const Vec2> uv,
                 std::span<const Vec2> direction);

/// The triangles that flip within that multiple of `direction`, as positions in the mesh's list.
std::vector<int> flippingTriangles(const EliminationMesh& mesh, std::span<const Vec2> uv,
                                   std::span<const Vec2> direction, double multiple);

/// The least determinant of the maps from the rest triangles: negative when one is flipped.
double leastDeterminant(const EliminationMesh& mesh, std::span<const Vec2> uv);

} // namespace unfold3d
