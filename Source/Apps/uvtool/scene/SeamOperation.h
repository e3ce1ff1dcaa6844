#pragma once

#include "scene/SceneGeometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace uvtool
{

/// What the library shall cut or sew in a scene.
struct SeamOperation
{
    enum Kind : std::int32_t
    {
        CutEdges,
        SewEdges,
        SewSelectedIslands,
        SewAllIslands
    };

    Kind kind = CutEdges;
    std::vector<unsigned int> edges; ///< pairs of vertices of the scene, flat; to cut or sew edges
    std::vector<unsigned int> seeds; ///< a vertex of each selected island
    bool otherIslandOnly = false;    ///< leave seams within an island open
    bool matchUVs = false;           ///< sew only where the UVs of the two sides agree
};

/// Has the library do it. Triangles and their order stay; vertices, indices and UVs change. Inside
/// of a LibraryScope.
void runSeamOperation(const SceneGeometry& scene, std::size_t slot, const SeamOperation& operation);

/// The same as a step of the undo stack, which is undone and redone. Returns what then wasn't as
/// before or as after the operation, as half a sentence; empty when all was. The scene is in the
/// state after the operation.
std::string runAndCheckUndo(const SceneGeometry& scene, std::size_t slot,
                            const SeamOperation& operation);

} // namespace uvtool
