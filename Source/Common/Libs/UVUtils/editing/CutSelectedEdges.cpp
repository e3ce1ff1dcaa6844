// The cut of kyUVUtils: the way of the selected edges to the geometries that they are edges of.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/CutAlongEdges.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <optional>
#include <span>

namespace
{

unsigned int sizeOf(const FlatEdgeList& edges)
{
    return static_cast<unsigned int>(edges.size());
}

/// A copy of the selected edges, since the cut rewrites the list; nothing for a null list.
std::optional<FlatEdgeList> selectedEdges(const osg::GeometryPtr& geometry)
{
    const osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::SelectedEdges);
    if (list.isNull())
        return std::nullopt;
    return FlatEdgeList(list.values().begin(), list.values().end());
}

/// Does one surface have both vertices?
bool areOnOneSurface(unsigned int a, unsigned int b, std::span<const ActiveSurface> surfaces)
{
    const auto behind = std::upper_bound(
        surfaces.begin(), surfaces.end(), a,
        [](unsigned int id, const ActiveSurface& surface) { return id < surface.firstId; });
    if (behind == surfaces.begin())
        return false;
    const ActiveSurface& surface = *(behind - 1);
    return a - surface.firstId < surface.vertexCount && b - surface.firstId < surface.vertexCount;
}

/// The pairs that can be edges of a surface, each in its order. A pair of two surfaces would tear
/// all pairs behind it apart when the ids are dealt out to surfaces.
FlatEdgeList edgesOfSurfaces(const FlatEdgeList& edges, std::span<const ActiveSurface> surfaces,
                             std::size_t idCount)
{
    FlatEdgeList result;
    result.reserve(edges.size());
    for (std::size_t i = 0; i + 2 <= edges.size(); i += 2)
        if (std::max(edges[i], edges[i + 1]) < idCount &&
            areOnOneSurface(edges[i], edges[i + 1], surfaces))
            result.insert(result.end(), {edges[i], edges[i + 1]});
    return result;
}

/// Where the operation on the top level writes.
std::optional<TopologyOpOutData> topOf(kyTopologyBridge* bridge)
{
    return bridge ? std::optional<TopologyOpOutData>(bridge->getImpl()) : std::nullopt;
}

TopologyOpOutData* pointerTo(std::optional<TopologyOpOutData>& out)
{
    return out ? &*out : nullptr;
}

} // namespace

void kyUVUtils::cutAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet set, kyTopologyBridge* bridge)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    if (bridge)
        bridge->getImpl()->clear();
    const std::optional<FlatEdgeList> selected = selectedEdges(geometry);
    if (!selected)
        return;
    std::optional<TopologyOpOutData> out = topOf(bridge);
    if (!useCMesh(geometry)) {
        doCutAlongEdges(geometry, selected->data(), sizeOf(*selected), true, set, pointerTo(out));
        return;
    }

    const CompactMeshScope scope(geometry, node, set);
    CompactShellMesh* const mesh = scope.getMesh();
    if (!mesh)
        return;
    const FlatEdgeList edges =
        edgesOfSurfaces(*selected, activeSurfaces(node), mesh->getVertFToC().size());
    if (edges.empty())
        return;
    FlatEdgeList meshEdges;
    mesh->mapEdgesFToC(edges.data(), sizeOf(edges), meshEdges);
    // The sides move apart on the mesh alone; the surfaces get its UVs at the end.
    doCutAlongEdges(mesh->getGeomPtr(), meshEdges.data(), sizeOf(meshEdges), true, set,
                    pointerTo(out));
    createChildData(bridge, geometry, node);
    callFuncOnActiveBaseGeometry(
        node, edges.data(), sizeOf(edges), true,
        [&](const osg::NodePtr& child, const osg::GeometryPtr& surface, const FlatEdgeList& ids,
            const unsigned int& /*firstId*/) {
            const auto childOut = getChildData(bridge, geometry, node, child);
            doCutAlongEdges(surface, ids.data(), sizeOf(ids), false, set, childOut.get());
        });
    mesh->mapChanged(geometry, node, pointerTo(out));
    scope.commit();
}
