#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/IslandLayout.h"
#include "Unfold3D/parameterisation/Flatten.h"

#include <functional>
#include <span>

namespace unfold3d
{

struct RelaxOptions
{
    int iterations = 2; ///< as FlattenOptions has them, but 0 moves pinned edges only
    bool preventBorderCrossings = true; ///< new ones; those that came in may stay
    double roomSpace = 0.001;           ///< as FlattenOptions has it
    bool preventFlips = true;           ///< never more flipped triangles than came in
    double power = 1.0;                 ///< 0 to 1: how far from what came in to the relaxed layout
    double lengths = 1.0;               ///< 0 to 1: what to care for, angles or lengths
};

/// Relaxes one island from the UVs it has. Vertices that aren't chosen stay; where none has to, the
/// island keeps its size, its middle and its turn, unless pins ask for another. A mirrored island
/// stays mirrored. One that never was mapped is unfolded instead, if all of it is chosen.
///
/// isChosen  [vertex of the session]
/// `progress` is called with 0 to 1 as the work goes on, rising. The session's edge numbers must
/// have been made where it has pins. Reads the session only; calls for different islands may run at
/// the same time. Throws Stopped.
IslandLayout relaxIsland(const Session& session, int island, std::span<const char> isChosen,
                         const RelaxOptions& options, const RunControl& control,
                         const std::function<void(double)>& progress);

} // namespace unfold3d
