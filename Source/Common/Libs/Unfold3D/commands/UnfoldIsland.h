#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/IslandLayout.h"
#include "Unfold3D/parameterisation/Flatten.h"

#include <functional>

namespace unfold3d
{

/// Unfolds one island: takes it out of the session's mesh, finds a start, flattens it, checks the
/// result and brings it to the scale of space and the side on which a user expects it; to the place
/// where it was, too, when it had one.
///
/// `progress` is called with 0 to 1 as the work goes on, rising. The session's edge numbers must
/// have been made where it has pins. Reads the session only; calls for different islands may run at
/// the same time. Throws Stopped.
IslandLayout unfoldIsland(const Session& session, int island, const FlattenOptions& options,
                          const RunControl& control, const std::function<void(double)>& progress);

} // namespace unfold3d
