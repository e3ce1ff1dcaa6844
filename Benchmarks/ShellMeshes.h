#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"

#include <cstdint>
#include <vector>

/// Scene-graph meshes of any size for the benchmarks. The same on every run.
namespace bench
{

/// Whether the surfaces of a shell hang together.
enum SurfaceBorders : std::int32_t
{
    WeldedBorders, ///< UVs go on from one surface to the next
    SeamBorders    ///< every surface has UVs of its own
};

/// A shell that is an open square sheet with hills on it, cut into rectangular surfaces like a
/// sheet of stamps. UVs, in slot 0, are the sheet seen from above.
///
/// triangleCount  about as many; at least two for each surface
osg::RefPtr<osg::Node> sheetShell(unsigned int triangleCount, unsigned int surfaceCount,
                                  SurfaceBorders borders);

/// The whole sheet as one plain geometry.
osg::RefPtr<osg::Node> sheetPlain(unsigned int triangleCount);

/// Puts vertices and triangles of each surface in random order, as scans and simplified meshes have
/// them.
void scatterSurfaces(const osg::NodePtr& shell);

/// The geometry core of a node.
osg::GeometryPtr coreOf(const osg::NodePtr& node);

/// A triangle list of three vertices each.
struct TriangleList
{
    std::vector<unsigned int> triangles;
    unsigned int vertexCount = 0;
};

/// The sheet row by row, as exporters write it.
TriangleList sheetTriangles(unsigned int triangleCount);

/// The same triangles and vertices in random order, the worst that a file can do to a cache.
TriangleList shuffled(const TriangleList& list);

/// Pieces of 16 triangles each that share no vertex.
TriangleList pieceTriangles(unsigned int triangleCount);

} // namespace bench
