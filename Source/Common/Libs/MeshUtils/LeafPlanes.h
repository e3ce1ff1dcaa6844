#pragma once

#include "MeshUtils/Lanes.h"
#include "MeshUtils/SearchSpace.h"

#include <span>

/// Up to four triangles, each between its own plane and three planes that stand on it along its
/// edges: tells which of them may be near a place, four in one go, without measuring them.
struct LeafPlanes
{
    /// One lane a triangle, in the coordinates of a SearchSpace; of unit length.
    struct Plane
    {
        Lanes x = {};
        Lanes y = {};
        Lanes z = {};
        Lanes offset = {};

        [[nodiscard]] Lanes heightOf(const std::array<float, 3>& place) const
        {
            return x * place[0] + y * place[1] + z * place[2] - offset;
        }
    };

    Plane own;
    Plane edges[3]; ///< facing outward

    /// The triangles must be at most four. A sliver, or a triangle too small for floats, gets
    /// planes of zeros, by which it is near everything.
    static LeafPlanes of(std::span<const SortedTriangle> triangles, const SearchSpace& space);

    /// Bounds of the square distances of the triangles from a place, from below but for rounding;
    /// to be compared with a limit from `limitFor`.
    [[nodiscard]] Lanes squareDistances(const std::array<float, 3>& place) const
    {
        const Lanes height = own.heightOf(place);
        Lanes outside = larger(edges[0].heightOf(place), edges[1].heightOf(place));
        outside = larger(larger(outside, edges[2].heightOf(place)), Lanes{});
        return height * height + outside * outside;
    }

    /// A limit of the boxes with room for the rounding of heights.
    static float limitFor(float boxLimit, float rounding)
    {
        const float distance = std::sqrt(boxLimit) + rounding;
        return std::min(distance * distance, SearchSpace::NoLimit);
    }
};
