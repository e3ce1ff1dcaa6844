#pragma once

#include "check/Lines.h"
#include "cli/Options.h"
#include "scene/SceneEdges.h"

#include <cstddef>
#include <span>
#include <vector>

namespace uvtool
{

/// The edges of a scene that are to lie along an axis. None lies along both: one that both files
/// name is vertical.
struct StraightEdges
{
    std::vector<std::size_t> horizontal; ///< of SceneEdges, ascending
    std::vector<std::size_t> vertical;
    std::size_t notInMesh = 0; ///< pairs of vertices that no triangle has as a side
    std::size_t inBoth = 0;    ///< edges that both files name

    bool isEmpty() const { return horizontal.empty() && vertical.empty(); }
};

/// Reads the files, which are as EdgeFile.h tells, and finds their edges.
StraightEdges findStraightEdges(const SceneGeometry& scene, const SceneEdges& edges,
                                const StraightOptions& options);

/// All sides of triangles along these edges, ascending.
HeldSides sidesAlong(const SceneEdges& edges, const StraightEdges& straight);

/// Sides of the scene's triangles as sides of all triangles of these geometries, those of one after
/// those of the one before; the scene is made of them, but for surfaces with a fault.
HeldSides sidesInDocument(const Document& document, std::span<const std::size_t> numbers,
                          const SceneGeometry& scene, const HeldSides& held);

} // namespace uvtool
