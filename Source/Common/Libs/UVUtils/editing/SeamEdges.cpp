#include "UVUtils/editing/SeamEdges.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"

FlatEdgeList copyOfList(const osg::GeometryPtr& geometry, kyUVTypes::TempIndexList number)
{
    const osg::GeoTmpIndexEditInterface list(geometry, number);
    return {list.values().begin(), list.values().end()};
}

FlatEdgeList pairsOnSurfaces(std::span<const unsigned int> pairs,
                             std::span<const ActiveSurface> surfaces)
{
    return pairsWhere(pairs,
                      [&](const Edge& edge) { return surfaceOfEdge(edge, surfaces) != nullptr; });
}

FlatEdgeList toCompactIds(const CompactShellMesh& mesh, std::span<const unsigned int> pairs)
{
    const std::size_t vertexCount = mesh.getVertFToC().size();
    const FlatEdgeList known =
        pairsWhere(pairs, [&](const Edge& edge) { return edge.second < vertexCount; });
    FlatEdgeList compact;
    mesh.mapEdgesFToC(known.data(), sizeOf(known), compact);
    return compact;
}
