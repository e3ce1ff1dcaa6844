#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/mesh/ImportedMesh.h"
#include "Unfold3D/mesh/TopologyLines.h"

#include <span>
#include <string>
#include <vector>

namespace unfold3d
{

/// The flat arrays of a mesh as a caller gives them.
struct MeshArrays
{
    std::span<const int> polySizes;    ///< [polygon] corners, always 3
    std::span<const int> polyXYZIds;   ///< [corner]  a point in space
    std::span<const double> coordsXYZ; ///< 3 for each point in space
    std::span<const int> polyUVWIds;   ///< [corner]  a UV point
    std::span<const double> coordsUVW; ///< 3 for each UV point
};

/// What was found in the arrays of a mesh.
struct ImportFindings
{
    std::string error;      ///< why the mesh can't be used at all; empty when it can
    TopologyLines errors3D; ///< where, for points in space
    TopologyLines errorsUV; ///< where, for UV points
    std::string warning;    ///< what is wrong, but can be worked around; empty when nothing is
    TopologyLines badTriangles;
    TopologyLines badEdges; ///< of more than two triangles, or of two that wind differently
};

/// Checks the arrays and makes a mesh of them. With an error in the findings the mesh is empty.
///
/// Refused: arrays whose sizes disagree, polygons of other than three corners, ids out of range,
/// coordinates that aren't finite or are beyond 1e150, a UV point that belongs to two points in
/// space. Worked around: bad triangles (see ImportedMesh::Part) and edges that aren't those of a
/// surface. An empty mesh is fine. UV points that no triangle uses stand at the origin in space.
///
/// Linear for meshes whose vertices have few triangles each.
ImportedMesh importMesh(const MeshArrays& arrays, ImportFindings& findings,
                        const RunControl& control);

/// Share of its longest edge below which the height of a triangle is nothing: what is left of a
/// line of three points after the rounding of their coordinates.
inline constexpr double noAreaHeight = 1e-9;

} // namespace unfold3d
