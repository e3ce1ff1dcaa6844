#pragma once

namespace unfold3d
{

/// What a layout is measured by. With s1 >= s2, the singular values of the map from a rest triangle
/// to the plane (s2 below zero where it is flipped), F = s1^2 + s2^2 and J = s1 s2, the energy per
/// area is a mix of
///
///     lengths    F (1 + 1/J^2)        the symmetric Dirichlet energy: 4 where nothing is distorted
///     angles     2 F / J              4 wherever angles are right, at any size
///
/// both infinite where a triangle has no area left. A soft energy is finite everywhere:
///
///     (F + J^2 + 1) / chi(J),         chi(J) = (J + sqrt(J^2 + softness^2)) / 2
///
/// (Garanzha and others 2021). The nearer its softness is to 0, the steeper is the way from flipped
/// to not, and 4 is its least value up to that softness.
///
/// The conformal energy F - 2 J is quadratic, so that it has one minimum only, wherever one comes
/// from; with two vertices fixed it is that of Levy and others (2002). It allows flips as well.
struct LayoutEnergy
{
    double lengths = 1.0;     ///< their share of the mix, above 0 to 1; the rest are the angles
    double softness = 0.0;    ///< above 0: the soft energy, whatever the mix
    bool isConformal = false; ///< the conformal energy, whatever the others

    bool allowsFlips() const { return softness > 0.0 || isConformal; }
    bool isLengthsOnly() const { return lengths == 1.0 && !allowsFlips(); }
};

} // namespace unfold3d
