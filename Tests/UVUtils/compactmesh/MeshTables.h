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
    static Ids vertCToF(const CompactShellMesh& mesh, unsigned c)
    {
        return {mesh.vertCToF_[c].begin(), mesh.vertCToF_[c].end()};
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
        const auto entry = CompactShellMesh::geomIdToParentCMeshsMap().find(id);
        return entry == CompactShellMesh::geomIdToParentCMeshsMap().end() ? 0
                                                                          : entry->second.size();
    }
    static void sortVertices(CompactShellMesh& mesh, TopologyOpOutData* out)
    {
        mesh.sortVertBuffCompactGeom(out);
    }
};

using MeshTables = CompactShellMeshTestAccess;

/// The mesh of a node's own core.
inline CompactShellMesh* meshOf(const osg::NodePtr& node, kyUVTypes::UVSet slot = kyUVTypes::UVSet0)
{
    return CompactShellMesh::getCMesh(osg::dcast<osg::Geometry>(node->getCore()), node, slot);
}
