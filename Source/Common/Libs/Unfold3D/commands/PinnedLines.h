#pragma once

#include "Unfold3D/commands/Session.h"
#include "Unfold3D/mesh/IslandSurface.h"
#include "Unfold3D/parameterisation/Flatten.h"

#include <vector>

namespace unfold3d
{

/// The pinned edges of an island as lines of its vertices: chains of edges with one pin become one
/// line each. The session's edge numbers must have been made where it has pins.
std::vector<StraightLine> pinnedLines(const Session& session, const IslandSurface& surface);

} // namespace unfold3d
