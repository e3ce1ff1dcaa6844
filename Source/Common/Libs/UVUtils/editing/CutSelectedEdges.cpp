// The cut of kyUVUtils: the way of the selected edges to the geometries that they are edges of.

#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/CutAlongEdges.h"
#include "UVUtils/editing/SeamEdges.h"
#include "UVUtils/model/DealIds.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

void kyUVUtils::cutAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet set, kyTopologyBridge* bridge)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    if (bridge)
        bridge->getImpl()->clear();
    const FlatEdgeList selected = copyOfList(geometry, kyUVTypes::SelectedEdges);
    if (selected.empty())
        return;
    const auto out = topLevelOf(bridge);
    if (!useCMesh(geometry)) {
        doCutAlongEdges(geometry, selected.data(), sizeOf(selected), true, set, out.get());
        return;
    }

    const CompactMeshScope scope(geometry, node, set);
    CompactShellMesh* const mesh = scope.getMesh();
    if (!mesh)
        return;
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    const FlatEdgeList edges = pairsOnSurfaces(selected, surfaces);
    const FlatEdgeList meshEdges = toCompactIds(*mesh, edges);
    if (meshEdges.empty())
        return;
    // The sides move apart on the mesh alone; the surfaces get its UVs at the end.
    doCutAlongEdges(mesh->getGeomPtr(), meshEdges.data(), sizeOf(meshEdges), true, set, out.get());
    createChildData(bridge, geometry, node);
    dealIds(surfaces, edges, true, [&](const ActiveSurface& surface, const FlatEdgeList& ids) {
        const auto childOut = getChildData(bridge, geometry, node, surface.node);
        doCutAlongEdges(surface.geometry, ids.data(), sizeOf(ids), false, set, childOut.get());
    });
    mesh->mapChanged(geometry, node, out.get());
    scope.commit();
}
