#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/mesh/ImportedMesh.h"

#include <array>
#include <cstddef>
#include <vector>

namespace unfold3d
{

/// The edge of a star, seen from the vertex in its middle.
struct Spoke
{
    int edge;
    int vertex; ///< at the other end
};

/// The surface on which seams are looked for: the sound triangles of an import with everything
/// about them that a search asks for again and again.
///
/// Every vertex is the middle of one fan of triangles, open or closed: a vertex of the import at
/// which several fans meet stands here several times. An edge has a triangle on either side, which
/// face the same side; all else is border, edges with more than two triangles included. So the
/// surface is manifold and oriented.
///
/// Vertices and triangles stand in the order of seams/CanonicalOrder.h.
///
/// Half-edges as in mesh/HalfEdges.h: 3 t + i runs from corner i of triangle t to the next.
struct SeamMesh
{
    std::vector<Vec3> positions;     ///< [vertex] the surface has its middle at the origin and the
                                     ///< size 1, as seams/SurfaceExtent.h measures
    std::vector<Triangle> triangles; ///< [triangle]
    std::vector<int> importedVertex; ///< [vertex] its number in the import
    std::vector<int> importedTriangle; ///< [triangle] its number in the import
    std::vector<char> firstCorner; ///< [triangle] its corner there that is corner 0 here, before
                                   ///< it is turned
    std::vector<char> isTurned;    ///< [triangle] wound otherwise than in the import

    std::vector<int> twin;        ///< [half-edge] the other half of its edge, -1 on the border
    std::vector<int> edgeOf;      ///< [half-edge] its edge, -1 on the border
    std::vector<int> halves;      ///< [edge] the lower of its half-edges; ascending
    std::vector<int> torn;        ///< half-edges at which a one-sided surface had to be torn to be
                                  ///< oriented: border here, but seams to be
    OffsetArray<Spoke> spokes;    ///< [vertex] the edges (not the border) at it
    std::vector<char> isOnBorder; ///< [vertex]

    std::vector<Vec3> normals;   ///< [triangle] of length 1; of a triangle too thin to have one,
                                 ///< that of a neighbour, and 0 where no neighbour has one
    std::vector<double> areas;   ///< [triangle]
    std::vector<double> lengths; ///< [edge]
    std::vector<double> angles;  ///< [edge] between the normals, 0 to pi; negative in a valley

    int vertexCount() const { return static_cast<int>(positions.size()); }
    int triangleCount() const { return static_cast<int>(triangles.size()); }
    int edgeCount() const { return static_cast<int>(halves.size()); }

    int originOf(int h) const
    {
        return triangles[static_cast<std::size_t>(h / 3)][static_cast<std::size_t>(h % 3)];
    }
    int targetOf(int h) const { return originOf(nextHalfEdge(h)); }
    /// The half-edges of an edge, the lower first; their triangles are h / 3.
    std::array<int, 2> halvesOf(int edge) const
    {
        const int h = halves[static_cast<std::size_t>(edge)];
        return {h, twin[static_cast<std::size_t>(h)]};
    }
    std::array<int, 2> trianglesOf(int edge) const
    {
        const auto [h, g] = halvesOf(edge);
        return {h / 3, g / 3};
    }
    std::array<int, 2> verticesOf(int edge) const
    {
        const int h = halves[static_cast<std::size_t>(edge)];
        return {originOf(h), targetOf(h)};
    }
    /// The corner of the triangle as it was imported from which the half-edge runs to the next
    /// corner, or to which it runs from there.
    int importedCorner(int h) const
    {
        const auto t = static_cast<std::size_t>(h / 3);
        constexpr std::array<int, 3> turned{2, 1, 0};
        const int corner = (h + firstCorner[t]) % 3;
        return isTurned[t] ? turned[static_cast<std::size_t>(corner)] : corner;
    }
};

/// Linear but for a sort around each vertex. Throws Stopped.
SeamMesh makeSeamMesh(const ImportedMesh& imported, const RunControl& control);

/// The angle of a triangle at the origin of a half-edge, by its positions.
double cornerAngle(const SeamMesh& mesh, int h);

} // namespace unfold3d
