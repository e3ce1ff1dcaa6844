#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/Session.h"

#include <vector>

namespace unfold3d
{

/// The layout of a session as a caller gets it.
struct ExportedLayout
{
    std::vector<Vec2> uv; ///< [vertex]
    int flips = 0;        ///< triangles that turn round, or collapse, because floats are too coarse
    int touches = 0;      ///< pairs of border edges that touch for the same reason
};

/// In islands that a command moved, no triangle turns round and no border comes to touch itself
/// when the caller rounds the UVs to floats: vertices that have to give way for that are moved, by
/// a few steps of the float grid. All other islands come out exactly as they were imported. Islands
/// run in parallel; the result doesn't depend on it. Throws Stopped.
ExportedLayout exportedLayout(const Session& session, const RunControl& control);

} // namespace unfold3d
