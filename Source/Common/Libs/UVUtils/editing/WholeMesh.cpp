// The small questions about the whole mesh of a node that kyUVUtils answers: all its edges and all
// its vertices.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <cstddef>
#include <numeric>
#include <span>

namespace
{

void appendEdge(unsigned int a, unsigned int b, FlatEdgeList& edges)
{
    const Edge edge(a, b);
    edges.push_back(edge.first);
    edges.push_back(edge.second);
}

unsigned int vertexCountOf(const osg::NodePtr& node)
{
    unsigned int count = 0;
    for (const ActiveSurface& surface : activeSurfaces(node))
        count += surface.vertexCount;
    return count;
}

} // namespace

FlatEdgeList kyUVUtils::getAllEdges(const osg::GeometryPtr& geometry)
{
    if (!geometry)
        return {};
    const IndexView indices(geometry->getIndices());
    const std::span<const unsigned int> ids = indices.ids();
    if (ids.size() % 3 != 0)
        return {};
    FlatEdgeList edges;
    edges.reserve(2 * ids.size());
    for (std::size_t first = 0; first < ids.size(); first += 3) {
        appendEdge(ids[first], ids[first + 1], edges);
        appendEdge(ids[first + 1], ids[first + 2], edges);
        appendEdge(ids[first + 2], ids[first], edges);
    }
    return edges;
}

FlatEdgeList kyUVUtils::getAllEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    kyUVTypes::UVSet uvSet)
{
    if (!isValidGeometry(geometry, node, false))
        return {};
    const CompactMeshScope scope(geometry, node, uvSet);
    FlatEdgeList edges = getAllEdges(scope.getGeometry());
    scope.toCallerIds(edges);
    return edges;
}

void kyUVUtils::makeIndexForAllVertices(const osg::GeometryPtr& geometry, const osg::NodePtr& node)
{
    osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::AllVertices);
    if (list.isNull())
        list.make();
    if (list.getType() != osg::GeoPrimitive::Points)
        list.setType(osg::GeoPrimitive::Points);
    const unsigned int vertexCount = vertexCountOf(node);
    if (list.getSize() == vertexCount)
        return;
    std::vector<unsigned int> all(vertexCount);
    std::iota(all.begin(), all.end(), 0U);
    list.assign(all);
}

std::vector<unsigned int> kyUVUtils::getAllVertices(const osg::GeometryPtr& geometry,
                                                    const osg::NodePtr& node)
{
    if (!isValidGeometry(geometry, node, false))
        return {};
    makeIndexForAllVertices(geometry, node);
    const osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::AllVertices);
    const std::span<const unsigned int> ids = list.values();
    return {ids.begin(), ids.end()};
}
