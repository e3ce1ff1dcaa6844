#pragma once

#include <cstdint>

namespace kyUnfold3D
{

/// Where the solver takes the UVs from that it starts with. The first two fall back to the last
/// where they have nothing to give.
enum UVWInputMode : std::int32_t
{
    InputUVs = 0,          ///< the caller's array, if it has one entry for each vertex
    GeometryTexCoords = 1, ///< the geometry's slot, unless it is empty or all zero
    Positions3D = 2        ///< the 3D positions of the vertices
};

} // namespace kyUnfold3D
