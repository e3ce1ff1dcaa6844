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
    /// Which map it came from; later ones are tried where the earlier would flip a triangle.
    enum Method : std::int8_t
    {
        Harmonic,      ///< springs by the cotangents of the angles: the least distortion
        ClampedSprings ///< the same, negative springs replaced by weak ones
    };

    Obstacle obstacle = Obstacle::None; ///< why there is none; then uv is empty
    Method method = Harmonic;
    std::vector<Vec2> uv; ///< [vertex]
};

/// A name for a report.
const char* nameOf(FlatStart::Method method);

/// Lays an island into the plane: every triangle has a positive area by an exact test, and the
/// border does not cross itself. Holes, any number of border loops, and fans that meet in a vertex
/// only are fine. What can't be laid out tells why.
///
/// Nothing about distortion or scale is promised. Time is that of a sparse factorisation or two.
/// Throws Stopped.
FlatStart flatStart(const IslandMesh& mesh, const RunControl& control);

} // namespace unfold3d
