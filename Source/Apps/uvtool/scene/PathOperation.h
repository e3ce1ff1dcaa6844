#pragma once

#include "cli/Console.h"
#include "cli/Options.h"
#include "scene/SceneEdges.h"
#include "scene/SceneIslands.h"

#include <cstddef>
#include <vector>

namespace uvtool
{

/// What paths are searched on.
struct PathGround
{
    const SceneGeometry& scene;
    const SceneIslands& found;
    const SceneEdges& edges;
};

/// Has the library search for a path between vertices of the scene; two of them an edge, in the
/// order of the walk.
///
/// A CommandError says why there is none: of status WrongUsage where the vertices can't be meant
/// (all of them are in the scene), else Failed.
std::vector<unsigned int> findPath(const PathGround& ground, const PathOptions& options,
                                   std::size_t slot, Console& console);

} // namespace uvtool
