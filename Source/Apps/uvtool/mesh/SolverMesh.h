#pragma once

#include "document/Document.h"
#include "mesh/CornerVertices.h"
#include "mesh/Islands.h"
#include "mesh/SheetSeparation.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// A geometry as the solver gets it: manifold triangles over vertices where position and UV agree.
struct SolverMesh
{
    std::vector<std::uint32_t> triangles;      ///< [3 * n] vertices
    std::vector<std::uint32_t> sourceTriangle; ///< [n] the geometry's triangle
    std::vector<std::uint32_t> cornerOfVertex; ///< [vertexCount] a polygon corner with its values

    std::size_t triangleCount() const { return sourceTriangle.size(); }
    std::size_t vertexCount() const { return cornerOfVertex.size(); }
};

/// What had to be done on the way, for the report.
struct SolverMeshReport
{
    SheetReport sheets;
    std::size_t degenerateTriangles = 0; ///< left out because they name a vertex twice
    std::size_t unmappedTriangles = 0;   ///< left out because a corner has no UV
};

/// Which triangles a command can work on.
enum UVNeed : std::int32_t
{
    WithoutUVs,      ///< all; where there is no UV, corners are joined by position
    WithUVs,         ///< those with a UV in the slot at every corner
    RegardlessOfUVs, ///< all, as if there were no UVs
};

/// The vertices that corners are joined into, before anything is separated.
CornerVertices verticesFor(const DocumentGeometry& geometry, std::size_t slot, UVNeed need);

/// Joins corners into vertices by position and UV, separates sheets and closed parts that touch
/// others, leaves out what no solver can work on.
SolverMesh buildSolverMesh(const DocumentGeometry& geometry, std::size_t slot, UVNeed need,
                           SolverMeshReport& report);

/// Finds a corner for each vertex of a mesh whose triangles have got other vertices; every one is
/// in use.
void nameCorners(const DocumentGeometry& geometry, std::size_t vertexCount, SolverMesh& mesh);

/// A mesh without some of its islands.
///
/// islands    of the mesh
/// isLeftOut  [island]  not 0 for those to leave out
SolverMesh withoutIslands(const SolverMesh& mesh, const Islands& islands,
                          const std::vector<char>& isLeftOut);

} // namespace uvtool
