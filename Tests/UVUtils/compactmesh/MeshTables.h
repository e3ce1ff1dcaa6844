#pragma once

#include "UVUtils/Meshes.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"

/// The tables of a mesh that no public operation shows whole.
struct CompactShellMeshTestAccess
{
    static const Ids& vertFToC(const CompactShellMesh& mesh) { return mesh.vertFToC_; }
    static const Buckets<unsigned>& vertCToF(const CompactShellMesh& mesh)
    {
        return mesh.vertCToF_;
    }
    static const Ids& facesF(const CompactShellMesh& mesh) { return mesh.facesF_; }
    static const Ids& facesSortedF(const CompactShellMesh& mesh) { return mesh.facesSortedF_; }
    static const Ids& faceOrder012(const CompactShellMesh& mesh) { return mesh.faceOrder012_; }
    static const Ids& faceOrder02(const CompactShellMesh& mesh) { return mesh.faceOrder02_; }
    static const Ids& faceOrder12(const CompactShellMesh& mesh) { return mesh.faceOrder12_; }
    static const Ids& faceMapping(const CompactShellMesh& mesh) { return mesh.faceMapping_; }
    static bool isClean(const CompactShellMesh& mesh) { return !mesh.isDirty(mesh.getSlot()); }

    static bool isOwner(unsigned id) { return CompactShellMesh::geomIdToCMeshMap().contains(id); }
    static std::size_t watchers(unsigned id)
    {
        const auto& meshes = CompactShellMesh::geomIdToParentCMeshsMap();
        return meshes.contains(id) ? meshes.at(id).size() : 0;
    }
};

using MeshTables = CompactShellMeshTestAccess;

/// The mesh of a node's own core.
inline CompactShellMesh* meshOf(const osg::NodePtr& node, kyUVTypes::UVSet slot = kyUVTypes::UVSet0)
{
    return CompactShellMesh::getCMesh(coreOf(node), node, slot);
}
