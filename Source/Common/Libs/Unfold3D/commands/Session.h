#pragma once

#include "Unfold3D/base/Vec.h"
#include "Unfold3D/mesh/EdgeNumbers.h"
#include "Unfold3D/mesh/ImportedMesh.h"
#include "Unfold3D/mesh/Islands.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace unfold3d
{

/// How an edge of the layout is held straight.
enum class EdgePin : std::int8_t
{
    Free,
    Horizontal, ///< both ends at one v
    Vertical    ///< both ends at one u
};

/// What one solver run keeps from command to command.
///
/// A command that changes UVs works on a copy and puts it here as its last step, so a stop or an
/// error leaves everything as it was.
struct Session
{
    bool imported = false;
    ImportedMesh mesh;
    Islands islands;
    /// Made when the first command names an edge; ask through edgeNumbers().
    std::optional<EdgeNumbers> edges;

    std::vector<Vec2> uvs;       ///< [vertex] the present layout, in doubles
    std::vector<double> w;       ///< [vertex] third coordinate: as imported, 0 once an island moved
    std::vector<char> isChanged; ///< [island] did a command move it since Import?
    std::vector<char> isFixed;   ///< [vertex] did the last command that moved its island leave it?

    std::vector<char> isVertexSelected; ///< [vertex]
    std::vector<char> isEdgeSelected;   ///< [edge] empty until the first edge is selected
    std::vector<char> isIslandSelected; ///< [island]
    std::vector<EdgePin> pins;          ///< [edge] empty until the first edge is pinned

    const EdgeNumbers& edgeNumbers()
    {
        if (!edges)
            edges = numberEdges(mesh.triangles);
        return *edges;
    }
};

} // namespace unfold3d
