#pragma once

#include "Unfold3D/seams/DistanceBands.h"

#include <cstdint>
#include <vector>

namespace unfold3d
{

/// A piece of a body that is long and equally wide all along: a limb, a handle, a pipe.
struct Tube
{
    /// What comes beyond an end.
    enum End : std::int8_t
    {
        Body, ///< the surface goes on
        Cap,  ///< it soon closes
        Open  ///< it soon ends with a border
    };

    std::vector<int> bands; ///< from one end to the other
    double girth = 0.0;     ///< mean length around it
    double length = 0.0;
    End start = Body;
    End end = Body;
};

/// The tubes of a surface, longest in comparison with their girth first; none overlap.
///
/// leastLength  in diameters
std::vector<Tube> findTubes(const DistanceBands& bands, double leastLength);

} // namespace unfold3d
