#pragma once

#include "cli/Console.h"
#include "layout/DocumentLayout.h"
#include "scene/SceneGeometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace uvtool
{

/// The islands that the library finds in a slot of a geometry or shell.
struct SceneIslands
{
    struct Island
    {
        std::size_t triangles = 0;
        std::size_t vertices = 0;      ///< of the compact mesh
        std::size_t borderEdges = 0;   ///< edges that one triangle has
        std::uint32_t seed = 0;        ///< a vertex of the scene, the lowest that the search names
        std::size_t firstTriangle = 0; ///< of the scene
    };

    std::vector<Island> islands; ///< in order of their first triangles in the compact mesh
    std::vector<std::uint32_t> compactOfVertex; ///< [vertex of the scene]
    std::size_t compactVertices = 0;
    std::vector<std::int32_t> islandOfTriangle; ///< [triangle of the scene]
    std::size_t borderEdges = 0;
    std::vector<std::string> warnings; ///< surfaces passed over or without UVs
};

/// Asks the library.
SceneIslands findSceneIslands(const Document& document, const SceneGeometry& scene,
                              std::size_t slot, Console& console);

/// Which islands a layout shows.
enum ShownIslands : std::int32_t
{
    AllIslands,
    OpenIslands ///< those with a border; nothing flat can be made of the others
};

/// The layout that the triangles have in the slot, in the islands that were found. Triangles
/// without a UV at every corner are left out.
DocumentLayout sceneLayout(const Document& document, const SceneGeometry& scene,
                           const SceneIslands& islands, std::size_t slot, ShownIslands shown);

} // namespace uvtool
