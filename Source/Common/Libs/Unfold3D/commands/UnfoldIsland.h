#pragma once

#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/Session.h"
#include "Unfold3D/parameterisation/Flatten.h"

#include <functional>
#include <string>
#include <vector>

namespace unfold3d
{

/// What became of one island.
struct IslandUnfold
{
    Obstacle obstacle = Obstacle::None; ///< why it can't be unfolded; then there are no UVs
    std::vector<int> vertices;          ///< of the session's mesh
    std::vector<Triangle> triangles;    ///< by positions in `vertices`, counter-clockwise in uv
    std::vector<Vec2> uv;               ///< [position in vertices] in the scale of space
    bool hadLayout = false;             ///< its UVs before weren't just its positions in space
    std::string method;                 ///< which methods served
    std::vector<std::string> warnings;  ///< each a sentence that doesn't name the island
};

/// Unfolds one island: takes it out of the session's mesh, finds a start, flattens it, checks the
/// result and brings it to the scale and the side on which a user expects it. Where it lies is the
/// caller's to say.
///
/// `progress` is called with 0 to 1 as the work goes on, rising. The session's edge numbers must
/// have been made where it has pins. Reads the session only; calls for different islands may run at
/// the same time. Throws Stopped.
IslandUnfold unfoldIsland(const Session& session, int island, const FlattenOptions& options,
                          const RunControl& control, const std::function<void(double)>& progress);

} // namespace unfold3d
