#include "UVUtils/compactmesh/CompactMeshScope.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/CopyUVs.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

CompactMeshScope::CompactMeshScope(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                   kyUVTypes::UVSet set)
    : geometry_(geometry), node_(node), set_(set),
      mesh_(CompactShellMesh::getCMesh(geometry, node, set)), quiet_(mesh_)
{}

const osg::GeometryPtr& CompactMeshScope::getGeometry() const
{
    return mesh_ ? mesh_->getGeomPtr() : geometry_;
}

bool CompactMeshScope::hasSlot() const
{
    return mesh_ ? kyUVUtils::hasUVSet(node_, set_)
                 : geometry_->getTexSlot(static_cast<unsigned int>(set_)) != osg::NullFC;
}

std::vector<unsigned int> CompactMeshScope::readTempIndices(kyUVTypes::TempIndexList list) const
{
    const osg::GeoTmpIndexEditInterface view(geometry_, list);
    std::vector<unsigned int> ids(view.values().begin(), view.values().end());
    if (!mesh_)
        return ids;
    const std::vector<unsigned int>& compactIdOfVertex = mesh_->getVertFToC();
    for (unsigned int& id : ids) {
        if (id >= compactIdOfVertex.size())
            return {};
        id = compactIdOfVertex[id];
    }
    return ids;
}

FlatEdgeList CompactMeshScope::toWorkIds(const std::vector<Edge>& edges) const
{
    FlatEdgeList ids;
    ids.reserve(2 * edges.size());
    for (const Edge& edge : edges) {
        if (!mesh_)
            ids.insert(ids.end(), {edge.first, edge.second});
        else if (edge.second < mesh_->getVertFToC().size())
            ids.insert(ids.end(),
                       {mesh_->mapVertFToC(edge.first), mesh_->mapVertFToC(edge.second)});
    }
    return ids;
}

void CompactMeshScope::toCallerIds(FlatEdgeList& edges) const
{
    if (!mesh_ || edges.size() < 2)
        return;
    const unsigned int vertexCount = vertexCountOf(mesh_->getGeomPtr());
    const FlatEdgeList known =
        pairsWhere(edges, [&](const Edge& edge) { return edge.second < vertexCount; });
    edges.clear();
    mesh_->mapEdgesCToF(known.data(), sizeOf(known), edges);
}

void CompactMeshScope::commit() const
{
    if (mesh_)
        copyUVsToSurfaces(*mesh_, geometry_, node_, set_);
}
