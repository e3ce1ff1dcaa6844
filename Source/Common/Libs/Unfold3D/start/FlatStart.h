#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"

#include <vector>

namespace unfold3d
{

/// A first layout of an island, to be improved by parameterisation/Flatten.h.
struct FlatStart
{
    /// Which map it came from.
    enum Method : std::int8_t
    {
        Harmonic, ///< the island as an elastic skin in a round frame
        Balanced, ///< the same, softened where it comes out too small
        Grid      ///< a drawing of the connections alone, which no shape can upset
    };

    Obstacle obstacle = Obstacle::None; ///< why there is none; then uv is empty
    Method method = Harmonic;
    std::vector<Vec2> uv; ///< [vertex]
};

/// A name for a report.
const char* nameOf(FlatStart::Method method);

/// Lays an island into the plane: every triangle has a positive area by an exact test, and the
/// border does not cross itself. Holes, any number of border loops, and fans that meet in a vertex
/// only are fine. What can't be laid out tells why; there is no other way to fail.
///
/// Nothing is promised about distortion and scale. The first method that does well serves; where
/// none does, the one with the least distortion. Time is that of one to five sparse factorisations.
/// Throws Stopped.
FlatStart flatStart(const IslandMesh& mesh, const RunControl& control);

} // namespace unfold3d
