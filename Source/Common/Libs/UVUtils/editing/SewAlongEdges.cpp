// The sew of kyUVUtils along edges of a node: on a plain geometry as it stands, or on the compact
// mesh and on each of its surfaces alike.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/SeamEdges.h"
#include "UVUtils/model/DealIds.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <ranges>

namespace
{

using Pairs = std::span<const unsigned int>; // two ids an edge

/// Is an edge in a list of ordered pairs, ascending by first, then second id?
bool containsEdge(Pairs sorted, const Edge& edge)
{
    const auto edgeAt = [&](std::size_t i) { return Edge(sorted[2 * i], sorted[2 * i + 1]); };
    const auto places = std::views::iota(std::size_t{0}, sorted.size() / 2);
    const auto found = std::ranges::lower_bound(places, edge, {}, edgeAt);
    return found != places.end() && edgeAt(*found) == edge;
}

/// Those edges of a sorted list whose lower id is on a surface, in ids of that surface.
FlatEdgeList localEdges(const std::vector<Edge>& sorted, unsigned int firstId,
                        unsigned int vertexCount)
{
    const auto begin = std::ranges::lower_bound(sorted, firstId, {}, &Edge::first);
    FlatEdgeList local;
    for (auto edge = begin; edge != sorted.end() && edge->first - firstId < vertexCount; ++edge)
        local.insert(local.end(), {edge->first - firstId, edge->second - firstId});
    return local;
}

} // namespace

void kyUVUtils::filterEdgesOnBorder(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    kyUVTypes::UVSet uvSet, const unsigned int* edges,
                                    unsigned int count, FlatEdgeList& out)
{
    const FlatEdgeList pairs(edges, edges + (edges ? count : 0)); // they may be those of a list
    updateBorderEdges(geometry, node, uvSet);
    const osg::GeoTmpIndexEditInterface borders(geometry, kyUVTypes::BorderEdges);
    const FlatEdgeList onBorder =
        pairsWhere(pairs, [&](const Edge& edge) { return containsEdge(borders.values(), edge); });
    out.insert(out.end(), onBorder.begin(), onBorder.end());
}

void kyUVUtils::sewAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, kyTopologyBridge* bridge)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    const FlatEdgeList selected = copyOfList(geometry, kyUVTypes::SelectedEdges);
    FlatEdgeList sewEdges;
    if (!selected.empty())
        filterEdgesOnBorder(geometry, node, uvSet, selected.data(), sizeOf(selected), sewEdges);
    if (sewEdges.empty())
        return;
    const FlatEdgeList allEdges = copyOfList(geometry, kyUVTypes::BorderEdges);
    sewAlongEdges(geometry, node, uvSet, allEdges.data(), sizeOf(allEdges), sewEdges.data(),
                  sizeOf(sewEdges), false, bridge);
}

void kyUVUtils::sewAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, const unsigned int* allEdges,
                              unsigned int allCount, const unsigned int* sewEdges,
                              unsigned int sewCount, bool matchUVs, kyTopologyBridge* bridge)
{
    if (bridge)
        bridge->getImpl()->clear();
    const auto out = topLevelOf(bridge);
    if (!useCMesh(geometry)) {
        doSewAlongBorders(geometry, uvSet, allEdges, allCount, sewEdges, sewCount, matchUVs,
                          out.get(), nullptr);
        return;
    }
    const CompactMeshScope scope(geometry, node, uvSet);
    CompactShellMesh* const mesh = scope.getMesh();
    if (!mesh)
        return;
    const FlatEdgeList allOfMesh = toCompactIds(*mesh, {allEdges, allCount});
    const FlatEdgeList sewOfMesh = toCompactIds(*mesh, {sewEdges, sewCount});
    if (allOfMesh.empty() || sewOfMesh.empty())
        return;
    std::unordered_set<Edge, EdgeHash> unsewable;
    doSewAlongBorders(mesh->getGeomPtr(), uvSet, allOfMesh.data(), sizeOf(allOfMesh),
                      sewOfMesh.data(), sizeOf(sewOfMesh), matchUVs, out.get(), &unsewable);
    createChildData(bridge, geometry, node);
    const FlatEdgeList sewable = pairsWhere({sewEdges, sewCount}, [&](const Edge& edge) {
        return edge.second < mesh->getVertFToC().size() &&
               !unsewable.contains(mesh->mapEdgeFToC(edge));
    });
    sewSurfaces(geometry, node, uvSet, edgesOf({allEdges, allCount}), sewable, matchUVs, bridge);
    mesh->mapChanged(geometry, node, out.get());
    scope.commit();
}

void kyUVUtils::sewSurfaces(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet uvSet, std::vector<Edge> allEdges,
                            const FlatEdgeList& sewEdges, bool matchUVs, kyTopologyBridge* bridge)
{
    sortAndDropRepeats(allEdges);
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    const auto sew = [&](const ActiveSurface& surface, const std::vector<unsigned int>& localSew) {
        const FlatEdgeList localAll = localEdges(allEdges, surface.firstId, surface.vertexCount);
        const auto out = getChildData(bridge, geometry, node, surface.node);
        doSewAlongBorders(surface.geometry, uvSet, localAll.data(), sizeOf(localAll),
                          localSew.data(), sizeOf(localSew), matchUVs, out.get(), nullptr);
    };
    dealIds(surfaces, pairsOnSurfaces(sewEdges, surfaces), true, sew);
}
