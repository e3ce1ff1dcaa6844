#pragma once

#include "OpenSG/FieldContainerPtr.h"
#include "OpenSG/FieldMask.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"

#include <memory>
#include <unordered_map>
#include <vector>

struct ActiveSurface;
struct TopologyOpOutData;
struct WeldedVertices;
struct kyTopologyData;

/// One connected mesh out of the surfaces of a shell, or out of a plain geometry, for one UV slot
/// at a time.
///
/// Vertices of two surfaces become one where the surfaces meet along an edge and agree there in
/// position and UV. Two numberings meet here:
///
///   F ids        the vertices of the active surfaces one surface after the other: the ids of every
///                exported operation and of every temporary index list
///   compact ids  the vertices of the mesh's own geometry, ascending by position
///
/// Each F id has one compact id; a compact id has one or more F ids.
///
/// There is one mesh for each geometry core. It is made and kept by getCMesh, watches the
/// geometries that it was built from, and is built again when one of them changed. Compact ids
/// don't outlive a getCMesh. Where two nodes share a shell core, the mesh is that of the node for
/// which it was built last; touch makes the next getCMesh look at its own node.
///
/// Ids out of range are the caller's fault. All of it belongs to the thread that owns the scene
/// graph.
class CompactShellMesh
{
public:
    CompactShellMesh(const CompactShellMesh&) = delete;
    CompactShellMesh& operator=(const CompactShellMesh&) = delete;
    ~CompactShellMesh();

    /// The up-to-date mesh of a geometry for a slot, built now if it isn't; null for null arguments
    /// and where kyUVUtils::useCMesh(geometry) is false. Hold the result for one operation only.
    static CompactShellMesh* getCMesh(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                      kyUVTypes::UVSet set);

    /// Would getCMesh have to build the mesh for this slot, since there is none or it is out of
    /// date?
    static bool isBuildDue(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set);

    /// The mesh itself: a plain geometry of triangles with positions and UVs in getSlot().
    const osg::GeometryPtr& getGeomPtr() const { return compactGeometry_.get(); }
    kyUVTypes::UVSet getSlot() const { return slot_; }

    /// Off while an operation edits the surfaces and brings the mesh along by itself; else every
    /// change of a surface makes the mesh dirty. A flag, not a counter.
    void enableGeomChangeCB(bool enable) { geomChangeCBEnabled_ = enable; }

    /// Makes the next getCMesh build the mesh anew: for what no notice tells, such as surfaces
    /// hidden, shown or added.
    void touch() { dirty_ = true; }

    // Translation between F ids and compact ids. Results are appended to `out`.

    /// The compact id of each F id; as long as there are F ids.
    const std::vector<unsigned int>& getVertFToC() const { return vertFToC_; }
    unsigned int mapVertFToC(unsigned int vertex) const { return vertFToC_[vertex]; }
    Edge mapEdgeFToC(Edge edge) const;
    /// One compact id for each id, in the order of the input.
    void mapVertsFToC(const unsigned int* ids, unsigned int count,
                      std::vector<unsigned int>& out) const;
    /// The same, entry by entry: pairs stay pairs, but are not ordered.
    void mapEdgesFToC(const unsigned int* ids, unsigned int count,
                      std::vector<unsigned int>& out) const;
    /// The F ids of compact ids: every one of each, or just the first.
    void mapVertsCToF(const unsigned int* ids, unsigned int count, std::vector<unsigned int>& out,
                      bool all) const;
    /// For each pair of compact ids (`count` is even) one pair of F ids on one surface, the one of
    /// the lower compact id first. A pair that no triangle has as an edge gives nothing.
    /// At most three binary searches a pair, each among the triangles at one vertex.
    void mapEdgesCToF(const unsigned int* ids, unsigned int count, FlatEdgeList& out) const;
    /// For each triangle of compact ids, in any order (`count` is a multiple of 3), its F ids in
    /// winding order. What is no triangle of the mesh gives nothing. One binary search each, among
    /// the triangles at one vertex.
    void mapSMeshCToF(const unsigned int* ids, unsigned int count,
                      std::vector<unsigned int>& out) const;

    // Bringing the mesh along.

    /// Makes all tables anew after an operation changed the topology of the mesh's geometry and of
    /// all active surfaces alike: vertices split, merged or renumbered, and the indices with them,
    /// while the triangles of each surface and their order stayed. The change callback is off.
    /// Where the active surfaces are others than those of the last build, the mesh is built anew.
    ///
    /// out  receives face mappings and indices for an undo, and its shuffles are moved to the new
    ///      order of the vertices; may be null
    void mapChanged(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                    TopologyOpOutData* out);
    /// Takes over the face mapping of the state that a record leads to, for the mapChanged that
    /// follows. Null does nothing.
    void applySavedMapping(const kyTopologyData* data);

private:
    friend struct CompactShellMeshTestAccess;

    CompactShellMesh();

    // Registry: who owns a mesh, and which geometries make it dirty.
    using MeshPtr = std::shared_ptr<CompactShellMesh>;
    static MeshPtr findMesh(const osg::FieldContainerPtr& container);
    static void registerToMesh(const osg::FieldContainerPtr& container, const MeshPtr& mesh,
                               bool isOwner);
    static void onGeometryChangeCB(unsigned int id, osg::FieldMask mask, unsigned int origin);
    static void onGeometryDestroyCB(unsigned int id);
    bool isDirty(kyUVTypes::UVSet set) const { return dirty_ || slot_ != set; }
    bool isGeomChangeCBEnabled() const { return geomChangeCBEnabled_; }

    // Construction.
    void initStates(const std::vector<ActiveSurface>& surfaces, kyUVTypes::UVSet set);
    void fillVertexTables(const WeldedVertices& welded, const std::vector<unsigned int>& order);

    // Order: what mapChanged restores.

    /// Sorts the vertices of the mesh's geometry by position, and moves recorded shuffles along;
    /// `out` may be null. The tables stay as they are.
    void sortVertBuffCompactGeom(TopologyOpOutData* out);
    /// Makes the tables of the triangles anew from those of the surfaces, [3 * triangle] F ids;
    /// vertFToC_ and the size of vertCToF_ are up to date. Returns the index list of the mesh's
    /// geometry: the triangles in order, in their winding.
    ///
    /// formerOrder  the same list in the order that the tables have so far, if there is one
    std::vector<unsigned int> sortAndBuildFaceMappings(const std::vector<unsigned int>& trianglesF,
                                                       std::vector<unsigned int> formerOrder = {});

    bool dirty_ = true;
    bool geomChangeCBEnabled_ = true;
    osg::RefPtr<osg::Geometry> compactGeometry_;
    std::vector<unsigned int> vertFToC_;
    Buckets<unsigned int> vertCToF_; ///< [compact id] its F ids
    kyUVTypes::UVSet slot_ = kyUVTypes::UVSet0;

    // The triangles; `k` counts them in the order of their three compact ids, ascending.
    std::vector<unsigned int> facesSortedF_; ///< [3k] F ids, ascending by their compact ids
    std::vector<unsigned int> faceOrder012_; ///< [k] offsets 3k by first, second, third vertex
    std::vector<unsigned int> faceOrder02_;  ///< [k] offsets 3k by first, third vertex
    std::vector<unsigned int> faceOrder12_;  ///< [k] offsets 3k by second, third vertex
    std::vector<unsigned int> lowestBegin_;  ///< [compact id] begin of its block in 012 and 02
    std::vector<unsigned int> middleBegin_;  ///< [compact id] begin of its block in 12
    std::vector<unsigned int> facesF_;       ///< [3k] F ids in winding order
    std::vector<unsigned int> faceMapping_;  ///< triangle in surface order -> its k

    using OwnerTable = std::unordered_map<unsigned int, MeshPtr>;
    using WatchTable = std::unordered_map<unsigned int, std::vector<MeshPtr>>;
    static OwnerTable& geomIdToCMeshMap();        ///< container id of what was asked for
    static WatchTable& geomIdToParentCMeshsMap(); ///< container id of what meshes depend on
};
