#pragma once

#include "Unfold3D/base/Vec.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace unfold3d
{

/// Where the corners of a triangle lie in a layout.
using CornerUVs = std::array<Vec2, 3>;

/// The energy of an undistorted layout.
inline constexpr double leastEnergy = 4.0;

/// A patch while seams are being looked for, and its layout.
struct PatchLayout
{
    std::vector<int> triangles;     ///< ascending
    std::vector<CornerUVs> corners; ///< [place in triangles] in the scale of the mesh; empty where
                                    ///< there is no layout
    double area = 0.0;              ///< in the scale of the mesh
    double energy = leastEnergy;    ///< of the layout: symmetric Dirichlet, mean over the area

    /// By how much the energy is above that of an undistorted layout, summed over the area. A patch
    /// without area has none, whatever its stand-in shapes say.
    double strain() const { return area > 0.0 ? area * (energy - leastEnergy) : 0.0; }
    bool isEmpty() const { return triangles.empty(); }
    std::size_t placeOf(int triangle) const
    {
        return static_cast<std::size_t>(
            std::lower_bound(triangles.begin(), triangles.end(), triangle) - triangles.begin());
    }
    /// Where the origin of a half-edge lies.
    Vec2 originOf(int h) const { return corners[placeOf(h / 3)][static_cast<std::size_t>(h % 3)]; }
};

} // namespace unfold3d
