#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// What was not manifold in a geometry, or had no area.
struct RepairCounts
{
    std::size_t degenerateTriangles = 0; ///< that were removed
    std::size_t droppedPolygons = 0;     ///< of such triangles only
    std::size_t singularVertices = 0;
    std::size_t singularEdges = 0;
    std::size_t newVertices = 0;
    std::size_t singularUVs = 0; ///< in which charts met that share no edge
    std::size_t newUVs = 0;
    std::size_t rounds = 0; ///< that found something

    bool changedAnything() const { return degenerateTriangles + newVertices + newUVs > 0; }

    RepairCounts& operator+=(const RepairCounts& other);
};

struct Repair
{
    RepairCounts counts;
    /// [3 * triangleCount] Positions or UVs; those behind the geometry's are copies, as partCorners
    /// and partUVs take them.
    std::vector<std::uint32_t> numberOfTriangleCorner;
};

/// What a vertex is where triangles are to hang together.
enum RepairedVertices : std::int32_t
{
    PositionVertices, ///< a number of a position: what a file says that has attributes at corners
    /// A combination of it with all attributes and the material: what becomes a vertex in a file
    /// that has attributes at vertices, and primitives of one material.
    WholeVertices
};

/// Finds the triangles that the library takes for ones without an area: two corners lie in one
/// place, or all on one line, in single precision. [triangleCount]
std::vector<char> findDegenerateTriangles(const DocumentGeometry& geometry);

/// Finds what is not manifold in the triangles of a geometry and has the library fix it until
/// nothing is left. No triangle names a vertex twice: one that does runs along an edge twice, so
/// that the library would cut the surface open beside it.
///
/// Returns positions.
Repair repairTriangles(const DocumentGeometry& geometry, RepairedVertices kind);

/// Finds the UVs of a slot in which charts meet that share no edge, and gives each chart but the
/// first one of its own. A chart is made of triangles that hang together by edges at which they
/// name the same positions and the same UVs. For a geometry without singular edges, where UVs
/// belong to corners.
///
/// Corners without a UV join charts as if it were one, but there is nothing to part in it. Returns
/// UVs, absentIndex for these.
Repair repairUVs(const DocumentGeometry& geometry, std::size_t slot);

} // namespace uvtool
