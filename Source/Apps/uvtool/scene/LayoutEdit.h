#pragma once

#include "scene/RelaxOperation.h"
#include "scene/SceneIslands.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// A layout of a scene in which vertices are to move, and what has come of it.
struct LayoutEdit
{
    RelaxOperation operation;   ///< of those that relax it
    std::vector<char> isMapped; ///< [triangle of the scene] has UVs at all its corners
    std::vector<char> mayMove;  ///< [compact vertex]
    HeldSides held;             ///< sides of triangles of the scene with an end that may move
    std::vector<Vec2f> before;  ///< [triangle corner]
    std::vector<Vec2f> after;

    bool hasMoved(std::size_t corner) const { return after[corner] != before[corner]; }
};

/// An edit of all triangles that have UVs.
LayoutEdit editOfAll(const Document& document, const SceneGeometry& scene,
                     const SceneIslands& found, std::size_t slot);

/// Restricts an edit to the islands of some vertices of the scene, or to these vertices.
void restrictToIslands(const SceneGeometry& scene, const SceneIslands& found,
                       std::vector<unsigned int> seeds, LayoutEdit& edit);
void restrictToVertices(const SceneIslands& found, std::vector<unsigned int> vertices,
                        LayoutEdit& edit);

/// Is there a triangle with UVs at a vertex that may move?
bool hasWork(const SceneGeometry& scene, const SceneIslands& found, const LayoutEdit& edit);

/// Holds edges straight, where they may move.
void hold(const SceneGeometry& scene, const SceneIslands& found, const SceneEdges& edges,
          StraightEdges straight, LayoutEdit& edit);

/// Gives corners of triangles without UVs back what they had. A CommandError of status Unsound
/// where a vertex has moved that was to stay.
void keepWhatStays(const SceneGeometry& scene, const SceneIslands& found, LayoutEdit& edit);

/// Takes what has moved to values that a file can hold in which v runs downward. Triangles that
/// this turns over are turned back by their vertices that have moved, but for those on lines.
void roundForTurnedV(const SceneGeometry& scene, const SceneIslands& found, LayoutEdit& edit);

/// [island] 1 for those of which a UV has changed.
std::vector<char> changedIslands(const SceneIslands& found, const LayoutEdit& edit);

} // namespace uvtool
