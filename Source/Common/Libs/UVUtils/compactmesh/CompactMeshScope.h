#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/compactmesh/QuietMesh.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVTypes.h"

#include <vector>

class CompactShellMesh;

/// What an operation holds while it works on a node: the geometry to work on, which is that of the
/// node's compact mesh where there is one and the node's own otherwise, and the way between the
/// caller's vertex ids and those of that geometry.
///
/// While it lives, changes of the surfaces don't make the mesh dirty. When it ends, on whatever
/// path, they do again; the switch is no counter, so of two scopes on one mesh the first to end
/// turns it back. UVs written to the work geometry reach the surfaces by commit only.
///
/// Holds no references: geometry and node outlive it.
class CompactMeshScope
{
public:
    CompactMeshScope(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                     kyUVTypes::UVSet set);
    CompactMeshScope(const CompactMeshScope&) = delete;
    CompactMeshScope& operator=(const CompactMeshScope&) = delete;

    /// Null where the geometry itself is worked on.
    CompactShellMesh* getMesh() const { return mesh_; }
    /// The geometry to work on; null only if that of the caller is.
    const osg::GeometryPtr& getGeometry() const;

    /// Does the node have the slot, of whatever kind? The mesh always has it, as zeros if need be.
    bool hasSlot() const;

    /// The content of one of the caller's lists, in ids of the work geometry. Empty for a null
    /// list, and for one that names a vertex which the mesh does not have: it is stale.
    std::vector<unsigned int> readTempIndices(kyUVTypes::TempIndexList list) const;
    /// Edges of the caller in ids of the work geometry: the ends of each in their order, which may
    /// leave the higher id first. Edges of vertices that the mesh does not have drop out.
    FlatEdgeList toWorkIds(const std::vector<Edge>& edges) const;
    /// Turns edges of the work geometry into the caller's. Edges that no triangle has drop out, and
    /// so does an id left over at the end; lists of less than two ids stay as they are.
    void toCallerIds(FlatEdgeList& edges) const;

    /// Writes the mesh's UVs to the surfaces. Does nothing without a mesh.
    void commit() const;

private:
    osg::GeometryPtr geometry_;
    osg::NodePtr node_;
    kyUVTypes::UVSet set_;
    CompactShellMesh* mesh_;
    QuietMesh quiet_;
};
