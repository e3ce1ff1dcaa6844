#pragma once

#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/parameterisation/EliminationMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The two halves of the symmetric Dirichlet energy of a layout. Scaled by c, it is
/// c^2 * stretch + shrink / c^2.
struct Distortion
{
    double stretch = 0.0; ///< area-weighted mean of s1^2 + s2^2
    double shrink = 0.0;  ///< of 1/s1^2 + 1/s2^2; infinite when a triangle is flipped

    double energy() const { return stretch + shrink; }
    /// The energy at the best scale, and that scale.
    double bestEnergy() const;
    double bestScale() const;
};

/// Measures a layout ([column]). Linear.
Distortion measure(const EliminationMesh& mesh, std::span<const Vec2> uv);

/// Adds the energy's gradient and its curvature to what stands in `gradient` ([column]) and
/// `hessian`. No triangle of the layout may be flipped.
void addDerivatives(const EliminationMesh& mesh, std::span<const Vec2> uv, Curvature kind,
                    std::span<Vec2> gradient, BlockMatrix& hessian);

/// How far the layout can move along `direction` until the first triangle has no area left, as a
/// multiple of `direction`; infinite when none ever gets there.
double firstFlip(const EliminationMesh& mesh, std::span<const Vec2> uv,
                 std::span<const Vec2> direction);

/// Whether all triangles have a positive area as computed in doubles.
bool isFlipFree(const EliminationMesh& mesh, std::span<const Vec2> uv);

} // namespace unfold3d
