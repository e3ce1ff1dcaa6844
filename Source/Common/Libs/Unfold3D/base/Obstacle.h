#pragma once

#include <cstdint>

namespace unfold3d
{

/// What keeps an island from being laid into the plane.
enum class Obstacle : std::int8_t
{
    None,
    CrowdedEdge,  ///< an edge has more than two triangles
    OneSided,     ///< a band with a half twist: its triangles can't be made to face one side
    Closed,       ///< a part of the island has no border
    Handle,       ///< a part of the island has a handle, as a torus with a hole does
    TouchesItself ///< the island meets itself in single vertices, in a way the plane has no room
                  ///< for
};

} // namespace unfold3d
