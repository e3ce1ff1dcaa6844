#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/IslandLayout.h"

#include <functional>
#include <vector>

namespace unfold3d
{

/// Makes something of one island. Calls `progress` with 0 to 1, rising, and may run at the same
/// time for several islands.
using IslandWork =
    std::function<IslandLayout(int island, const std::function<void(double)>& progress)>;

/// Works on islands side by side, the largest first; each counts by its size in the progress of the
/// whole. Returns what came of chosen[i] at [i]. Throws Stopped.
std::vector<IslandLayout> workOnIslands(const Session& session, const std::vector<int>& chosen,
                                        const IslandWork& work, RunControl& control);

} // namespace unfold3d
