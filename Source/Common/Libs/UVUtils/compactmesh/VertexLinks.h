#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVTypes.h"

#include <optional>
#include <span>
#include <vector>

// Which vertex of a compact mesh each vertex of its surfaces is, when both have changed alike:
// triangles are still the same triangles, corner by corner, whatever their vertices are called now.

/// The compact id of a vertex that no triangle has linked yet.
inline constexpr unsigned int noCompactId = 0xFFFFFFFF;

/// Which vertex of the mesh each vertex of the surfaces is.
struct VertexLinks
{
    std::vector<unsigned int> vertFToC; ///< [F id] noCompactId for a vertex that no triangle uses
    /// Is a vertex of a surface several of the mesh? Its last triangle has decided then.
    bool isTorn = false;
};

/// trianglesF     [3 * triangle] F ids, surface by surface, below vertexCount
/// meshTriangles  [3 * triangle] compact ids, each triangle with its first corner first
/// faceMapping    [triangle of the surfaces] which triangle of the mesh it is
///
/// Returns nothing when surfaces, mesh and mapping are not of the same triangles, or an id of the
/// mesh is not below compactCount. Linear.
std::optional<VertexLinks> linkThroughTriangles(std::span<const unsigned int> trianglesF,
                                                std::size_t vertexCount,
                                                std::span<const unsigned int> meshTriangles,
                                                std::size_t compactCount,
                                                std::span<const unsigned int> faceMapping);

/// Links the vertices that no triangle has linked, with those of the mesh to which nothing is
/// linked yet: one to one by position and by UV in `set`, or by position alone. Where the mesh has
/// fewer of them some share one, at any position if there is none at theirs.
///
/// vertFToC  [F id] read and completed
///
/// Linear, but for the sorting of such vertices.
void linkLooseVertices(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                       kyUVTypes::UVSet set, std::vector<unsigned int>& vertFToC);

/// Is each vertex of the surfaces, but for the weld tolerance, where its vertex of the mesh is?
/// False also where the table does not fit. Linear.
bool agreeInPosition(const std::vector<ActiveSurface>& surfaces, const osg::Geometry& mesh,
                     std::span<const unsigned int> vertFToC);
