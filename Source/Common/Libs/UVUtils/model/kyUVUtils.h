#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <set>
#include <unordered_set>
#include <vector>

class CompactMeshScope;
class kyTopologyBridge;
struct LatticeGrid;
struct SolverEdit;
struct TopologyOpOutData;

namespace kyUnfold3D
{
class OptimizeSettings;
class PackSettings;
class SeamSettings;
class UnfoldSettings;
} // namespace kyUnfold3D

namespace osg
{
class GeoTmpIndexEditInterface;
template <class T>
class TransformationMatrix;
} // namespace osg

/// The facade: every UV operation that an application calls is a static operation of this class.
///
/// An operation takes a scene-graph node, its geometry core and a UV slot. A plain geometry holds
/// the mesh itself; a shell holds none, and its mesh lies in its surfaces, the geometry cores of
/// its node's children. Vertex ids run over the active surfaces of a node one after the other,
/// also in the lists that an operation takes and gives.
///
/// An operation on a geometry that is not valid returns without effect.
///
/// All of it belongs to the thread that owns the scene graph; nothing here is locked.
class kyUVUtils
{
public:
    /// What part of a geometry an operation of the solver addresses. Other numbers are stored and
    /// returned as they are.
    enum ESelectMode : std::int32_t
    {
        SelectAll = 0,
        SelectIslands = 1, ///< the vertices in the list kyUVTypes::IslandVertices
        SelectVertices = 2 ///< the vertices in the list kyUVTypes::FreeVertices
    };

    enum ECreateUVMethod : std::int32_t
    {
        IslandsAABBProjection = 0
    };

    kyUVUtils(const kyUVUtils&) = delete;
    kyUVUtils& operator=(const kyUVUtils&) = delete;

    /// Made on first use; lives to the end of the process.
    static kyUVUtils& instance();

    // What the application has chosen. Each setter but the one of fill shading tells the
    // application, also when the value stays the same: "VESelectionChanged", then
    // "UVSelectionModeChanged".

    static ESelectMode getSelectMode();
    static void setSelectMode(ESelectMode mode);
    static kyUVTypes::UVSet getSelectUVSet();
    static void setSelectUVSet(kyUVTypes::UVSet uvSet);
    /// Kept for the application; the library does not look at it.
    static bool getFillShading();
    static void setFillShading(bool fill);
    /// Whether a plain geometry is worked on through a compact mesh, as a shell always is. True at
    /// the start; decides for all operations at once.
    static bool getUseCompactMesh();
    static void setUseCompactMesh(bool use);

    /// May this geometry be worked on? A plain geometry must pass kyGeoUtils::checkGeometryCore; of
    /// a shell at least one surface must, visible or not. With `verbose` the reason is logged, and
    /// so is the number of surfaces of a valid shell that are passed over.
    static bool isValidGeometry(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                bool verbose);

    /// Is this geometry worked on through a compact mesh? False for null.
    static bool useCMesh(const osg::GeometryPtr& geometry);

    /// Receives a surface's node, its geometry, the ids within it, and the id of its first vertex
    /// among those of the whole node.
    using SurfaceFunction =
        std::function<void(const osg::NodePtr&, const osg::GeometryPtr&,
                           const std::vector<unsigned int>&, const unsigned int&)>;

    /// Deals ids out to the active surfaces of a node and calls `function` once for each surface
    /// that received any, in their order. Ids beyond the last surface are dropped.
    ///
    /// ids        [count]  vertex ids of the node, in any order, repeats allowed
    /// keepOrder  a surface gets its ids in the order in which they stand in `ids`, so that the
    ///            pairs of an edge list stay together; else ascending
    static void callFuncOnActiveBaseGeometry(const osg::NodePtr& node, const unsigned int* ids,
                                             unsigned int count, bool keepOrder,
                                             const SurfaceFunction& function);

    // Islands and the mesh as a whole. A UV island is a part of the triangles that hangs together
    // through shared vertices; UVs are not looked at. Through a compact mesh the vertices that it
    // welded across borders of surfaces count as one, and all ids are those of the node.

    /// Finds the islands that contain certain vertices.
    ///
    /// ids                  [count]  vertices of the islands to find, repeats allowed; null or none
    ///                      for all islands. One that lies in no island asks for the first island
    /// wholeIslandsOnly     find an island only when there are as many ids in it as it has
    /// vertices:
    ///                      the ids have to cover it; without ids it has no effect
    ///
    /// Appended to, never cleared; islands in the order in which their first triangles stand in the
    /// geometry, or in the compact mesh:
    /// islandTriangles      three vertices for each triangle, island after island
    /// islandTriangleCounts [island]  entries in islandTriangles, so three times its triangles
    /// islandVerts          the vertices of each island, island after island; through a compact
    ///                      mesh one id for each of the mesh's vertices, else ascending
    /// islandVertCounts     [island]  entries in islandVerts
    ///
    /// Linear in triangles without a compact mesh; with one, a binary search for each triangle that
    /// is found comes on top.
    static void findUVIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                              bool wholeIslandsOnly, std::vector<unsigned int>& islandTriangles,
                              std::vector<unsigned int>& islandTriangleCounts,
                              std::vector<unsigned int>& islandVerts,
                              std::vector<unsigned int>& islandVertCounts);

    /// The lowest vertex that findUVIslands names of each island, for all islands in their order.
    static std::vector<unsigned int> getAllIslandSeeds(const osg::GeometryPtr& geometry,
                                                       const osg::NodePtr& node,
                                                       kyUVTypes::UVSet uvSet);

    /// The three edges of every triangle, an edge as often as triangles have it. Through a compact
    /// mesh each edge is named by one pair of vertices, however many surfaces it lies on.
    static FlatEdgeList getAllEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    kyUVTypes::UVSet uvSet);

    /// All vertex ids of the node, ascending, those that no triangle uses too. They also stand in
    /// the list kyUVTypes::AllVertices then.
    static std::vector<unsigned int> getAllVertices(const osg::GeometryPtr& geometry,
                                                    const osg::NodePtr& node);

    /// Puts all vertex ids of the node into the list kyUVTypes::AllVertices of the geometry, as
    /// points. A list of the right size is left as it is. Looks at the node's own core and does not
    /// ask whether the geometry is valid.
    static void makeIndexForAllVertices(const osg::GeometryPtr& geometry, const osg::NodePtr& node);

    /// Selects the islands of the vertices in the list kyUVTypes::IslandVertices anew, for when the
    /// islands have changed under the selection. Nothing happens for a null list; an empty one
    /// deselects all.
    static void restoreIslandSelection(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);

    // Seams. A border edge is one that exactly one triangle uses, in the space of vertex ids: an
    // edge of the mesh's rim, or one side of a UV seam. Through a compact mesh the borders between
    // surfaces that it welded are none. Lists of edges hold two ids an edge.

    /// Brings the list kyUVTypes::BorderEdges of the geometry up to date: pairs with the lower id
    /// first, ascending by first, then second id; lines. Through a compact mesh each of its border
    /// edges is named by one pair of vertices on one surface. Without any the list is empty, not
    /// null.
    ///
    /// The triangles are searched, linear in them, when indices have changed since the last time,
    /// the slot or getUseCompactMesh is another, or the list is null; else nothing happens at all.
    /// For an invalid geometry the list stays as it is and counts as up to date.
    static void updateBorderEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                  kyUVTypes::UVSet uvSet);
    /// Puts the vertices of the list SelectedEdges into the list SelectedEdgeVertices, as points,
    /// ascending, each once. Without selected edges the list is empty, not null.
    static void updateEdgeVSet(const osg::GeometryPtr& geometry);
    /// Joins two lists of edges: `out` becomes their edges, each once, the lower id first,
    /// ascending. Where one list is null or empty, `out` becomes the other one as it stands,
    /// neither ordered nor rid of repeats.
    static void mergeEdgeSet(const unsigned int* a, unsigned int aCount, const unsigned int* b,
                             unsigned int bCount, FlatEdgeList& out);

    /// Cuts along the edges in the list SelectedEdges: the triangles on the two sides of a cut get
    /// vertices of their own, with copies of all vertex properties, and the UVs in `set` of the
    /// sides move apart by about 1.2e-5, so that they are not taken for one again. A cut that ends
    /// within a surface leaves its last vertex whole.
    ///
    /// Pairs that are no edge of the mesh or of a surface have no effect, but that a vertex whose
    /// first pair is none is not split. New vertices follow the old ones of their geometry,
    /// ascending by the vertex that they come from. On a plain geometry and on each surface,
    /// temporary lists and constraints name all copies of what they named. The lists of a shell
    /// itself stay as they are, in the ids from before: they are stale where vertices were added.
    ///
    /// bridge  emptied, then filled with the record of the change; may be null. It stays empty
    ///         where there is nothing to cut along
    ///
    /// On a plain geometry one pass over the triangles, and what follows the number of edges; the
    /// record clones the indices. Through a compact mesh its tables are made anew.
    static void cutAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet set, kyTopologyBridge* bridge);

    /// Appends those pairs of a list of edges that are border edges, as they stand. Brings the list
    /// BorderEdges up to date first; the edges are sought in it by bisection.
    static void filterEdgesOnBorder(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    kyUVTypes::UVSet uvSet, const unsigned int* edges,
                                    unsigned int count, FlatEdgeList& out);

    /// Sews the border edges among the list SelectedEdges: where exactly two border edges lie in
    /// one place, and one of them is selected, their ends become one vertex each. A vertex is in
    /// one place with another when positions, normals, colours and the other UV slots agree; the
    /// UVs that are sewn may be far apart, and become the mean of all that come together. The
    /// lowest id of those stays, and ids are dense again afterwards. Temporary lists and
    /// constraints of a plain geometry follow.
    ///
    /// Left open are places of three and more border edges, and those that a merge would fold:
    /// where an edge inside the mesh joins the two ends of a place, or three such edges meet it.
    ///
    /// bridge  is cleared, and receives the way there and back; may be null
    ///
    /// One pass over the triangles and each vertex property; n log n in border vertices. Through a
    /// compact mesh its tables are made anew as well.
    static void sewAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, kyTopologyBridge* bridge);

    /// Sews all borders of the selected islands (the list IslandTriangles) that lie on another
    /// border of theirs: both ends at positions that are equal to the last bit.
    ///
    /// otherIslandOnly  leave seams within one island open
    /// matchUVs         sew only where the UVs meet, but for 1e-4
    /// bridge           as for sewAlongEdges, but left alone where nothing is sewn
    static void sewSelectedIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                   kyUVTypes::UVSet uvSet, bool otherIslandOnly, bool matchUVs,
                                   kyTopologyBridge* bridge);
    /// The same for all islands.
    static void sewAllIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, bool otherIslandOnly, bool matchUVs,
                              kyTopologyBridge* bridge);

    // Undoable seams. Each puts one command a node onto kyUndoStack::get(0), also where nothing was
    // to be done; nodes without a geometry are passed over. All temporary lists of the geometry are
    // null afterwards. An undo brings back the UVs of the slot, the selected islands, vertices and
    // edges, and what the operation changed in other vertex properties, indices and constraints.
    // The command keeps the UVs and indices of both states.

    /// cutAlongEdges for each node.
    static void cutAlongEdgesUndo(std::vector<osg::NodePtr> nodes, kyUVTypes::UVSet uvSet);
    /// sewAlongEdges for each node.
    static void sewAlongEdgesUndo(std::vector<osg::NodePtr> nodes, kyUVTypes::UVSet uvSet);

    // Paths along edges, to pick seams by. Lists of edges hold two ids an edge; nothing is changed.
    // Through a compact mesh a path runs over from one surface to the next where they are welded,
    // and each of its edges is named by one pair of vertices on one surface, the lower vertex of
    // the mesh first; without one the ends of an edge stand in the order of the walk.

    /// Joins picked vertices, each with the next one, by the shortest path along edges, measured in
    /// space.
    ///
    /// picked        [count]  in the order of the walk; ids that no vertex has are passed over
    /// alongBorders  walk along border edges only, between picked vertices on borders: with one
    ///               inside there is no path at all
    /// edges         becomes the paths, one behind the other; left as it is for an invalid geometry
    ///
    /// Between islands that touch along seams, a path runs within an island that has twins of both
    /// ends, vertices at the same places (but for 1.2e-7), and ends at those. Of several such
    /// islands the one with the shortest path counts. The first two vertices without a path in
    /// between, such as one picked twice in a row, end the search; what was found before stays.
    ///
    /// The graph of edges is built once, linear in triangles. A path then costs a fill of the heap
    /// for each island that it may run in, and n log n in vertices nearer than its end.
    static void findEdgesShortestPath(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                      kyUVTypes::UVSet uvSet, const unsigned int* picked,
                                      unsigned int count, bool alongBorders, FlatEdgeList& edges);

    /// Goes on from an edge at both of its ends, along the straightest edges, until none is
    /// straight enough, or the walk meets itself.
    ///
    /// maxSurfaceAngle  degrees by which an edge may turn from the one before within the surface
    /// maxEdgeAngle     degrees by which it may turn in space
    /// bordersOnly      walk along border edges only; for another start edge there is no result
    /// stopAtBorders    go no further than to the first border vertex; does nothing for a start
    ///                  edge that is a border edge itself
    ///
    /// Returns the start edge, the edges that follow its higher vertex, and then those that follow
    /// the lower one, in the order of the walk. Empty for an invalid geometry, and for an edge of
    /// vertices that there aren't. An edge that closes a ring is found from both ends.
    ///
    /// Linear in triangles.
    static FlatEdgeList findContiguousEdges(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                            const Edge& start, float maxSurfaceAngle,
                                            float maxEdgeAngle, bool bordersOnly,
                                            bool stopAtBorders);

    // Repair of what is not manifold; see kyTopologyRepair for what that is.

    /// Makes all geometries below a node, the node's own included, what most algorithms ask for:
    /// removes triangles without an area, then repairs vertices and edges, as
    /// osg::RemoveDegPolysGraphOp and osg::TopologyRepairGraphOp do. What was fixed is logged, with
    /// the node's name, and the selected islands of the node are found anew.
    ///
    /// uvSet  the slot in which the sides of a repaired edge move apart
    ///
    /// One pass: repairing edges may leave vertices singular that were not so before. The repair of
    /// vertices and edges can be undone, one command for each geometry and kind; the removed
    /// triangles are gone, and with them the way back behind an older command on their geometry.
    ///
    /// False for null, and, with an error in the log, for a node that has vertex animation and for
    /// whose own geometry hasTopologyError holds: other vertices would not fit its frames.
    static bool repairTopology(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);
    /// Would repairTopology change the geometry of this node? Those below it are not looked at.
    /// False for null and for a core that is no geometry. Linear in triangles, but for sorting.
    static bool hasTopologyError(const osg::NodePtr& node);

    // Edges held straight: an unfold leaves both ends of a horizontal one at one v, of a vertical
    // one at one u. Each geometry keeps its own, on a shell each surface; they go with the vertices
    // through cuts and sews. An edge held by constrainEdges is held one way. Nobody asks whether an
    // edge is one of the mesh; between two surfaces of a shell there is none. Reading and writing a
    // shell, hidden surfaces count for nothing: theirs stay as they are.

    /// Holds the edges in the list SelectedEdges, and no longer the other way. Then the edges of
    /// this direction ascend. False for a null list.
    static bool constrainEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                               kyUVTypes::EdgeConstraint constraint);
    /// Frees the edges in the list SelectedEdges from one direction, or all of that direction where
    /// the list is null. False only for a null list on an invalid geometry.
    static bool unconstrainEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 kyUVTypes::EdgeConstraint constraint);
    /// The edges held in a direction, surface by surface.
    static std::vector<Edge> getConstrainedEdges(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node,
                                                 kyUVTypes::EdgeConstraint constraint);
    /// Holds these edges in a direction and no others; the other direction stays. False for an
    /// invalid geometry.
    static bool setConstrainedEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                    const std::vector<Edge>& edges,
                                    kyUVTypes::EdgeConstraint constraint);
    /// Brings the lists HorizontalEdges and VerticalEdges of all geometries and shells in the
    /// process up to date: lines, null where no edge is held. A list of a geometry is filled when
    /// it is null or was written since the last call, or when what is held in its direction has
    /// changed; then both lists of its shells are, and also where the geometry shows edges in a
    /// direction in which a shell has no list. Call it before they are drawn.
    static void updateConstrainedEdgesTempIndices();

    // UVs from the solver (kyUnfold3D). Each operation works on the node's compact mesh where there
    // is one and writes the result into the slot of all surfaces. Edges that are held straight are
    // honoured where UVs are unfolded or optimised. Selections are read from the lists of the
    // geometry; a mode that needs a selection fails where its list is empty.
    //
    // `Failure` is logged with the node's name, but not where there is nothing to work on: no
    // triangles, no selection, or no slot for an operation that needs one. `Cancelled`: the user
    // stopped it through kyStackedProgress. Both leave the UVs as they were. Each run writes lines
    // on what it does to standard output.

    /// Flattens the whole geometry into new UVs, starting from the 3D shape, and packs the islands.
    /// The slot is made where there is none, or none of the right size.
    static kyUVTypes::ReturnCode
    unfoldGeometryUnfold3D(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                           kyUVTypes::UVSet uvSet, const kyUnfold3D::UnfoldSettings& unfoldSettings,
                           const kyUnfold3D::PackSettings& packSettings);
    /// Flattens the selected islands anew, starting from their UVs, and does not pack them.
    static kyUVTypes::ReturnCode unfoldIslandsUnfold3D(const osg::GeometryPtr& geometry,
                                                       const osg::NodePtr& node,
                                                       kyUVTypes::UVSet uvSet,
                                                       const kyUnfold3D::UnfoldSettings& settings);
    /// Lays the islands out, all or the selected ones, whose vertices alone are moved then. The
    /// mode is SelectAll or SelectIslands.
    static kyUVTypes::ReturnCode packUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                                 const kyUnfold3D::PackSettings& settings,
                                                 ESelectMode selectMode);
    /// Relaxes the UVs of all vertices, or of those that are selected.
    static kyUVTypes::ReturnCode optimizeUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                     const osg::NodePtr& node,
                                                     kyUVTypes::UVSet uvSet,
                                                     const kyUnfold3D::OptimizeSettings& settings,
                                                     ESelectMode selectMode);
    /// Finds where the geometry should be cut and leaves it as it is.
    ///
    /// edges  becomes the edges to cut along, two ids each. Where the search did not go through,
    ///        what stood there is taken for edges of the compact mesh and turned into the node's
    static kyUVTypes::ReturnCode seamUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                                 const kyUnfold3D::SeamSettings& settings,
                                                 FlatEdgeList& edges);

    /// Gives all vertices first UVs, without the solver. IslandsAABBProjection drops the thinnest
    /// axis of each island's bounding box: the longest becomes u, the next one v, in the units of
    /// the positions, so islands may overlap. Vertices of no triangle get (0, 0). Logged as a
    /// failure where the slot is missing; an invalid geometry is left alone without a word.
    static void createUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                          const osg::NodePtr& node, ECreateUVMethod method);

    // UV values. A slot holds UVs when its property is of the kind GeoTexCoords2f; one of another
    // kind counts as absent here, but for hasUVSet and getLocalUVCount. Three views of them:
    //
    //   getUVValues, setUVValues   by the ids of the node's vertices, through the compact mesh
    //                              where useCMesh says so: welded vertices have one value
    //   ...NoCompact...            all surfaces of a shell in child order, hidden ones too, as they
    //                              stand in their own slots
    //   ...Local...                one geometry core and its own slot
    //
    // What is not possible is left as it was, without a word, and so are the out arrays. All are
    // linear in the geometry: its indices are checked first.

    using UVArray = std::vector<osg::Vector<float, 2>>;

    /// `uvs` becomes the values of all vertices of the node, [id]. Through a compact mesh a slot
    /// that a surface does not have reads as zeros; without one, a missing slot leaves `uvs`.
    static void getUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, UVArray& uvs);
    /// `uvs` becomes the values of some vertices, [count], in the order of `ids`. Null ids stand
    /// for all vertices. An id beyond the vertices leaves `uvs` as it was, and so does an empty
    /// list where there is a compact mesh.
    static void getUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, const unsigned int* ids, unsigned int count,
                            UVArray& uvs);

    /// Writes the values of all vertices of the node, [id]; another number of values than of
    /// vertices writes nothing. Where there is no slot, or one of the wrong size, it is made. Of
    /// several values for welded vertices the last one counts for all of them.
    static void setUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, const UVArray& uvs);
    /// The same for some vertices: value i goes to ids[i]. Nothing is written if the array's size
    /// is not `count`, or with an id beyond the vertices. Null ids stand for all vertices.
    static void setUVValues(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet set, const unsigned int* ids, unsigned int count,
                            const UVArray& uvs);

    /// A copy of the slot; empty without one, and for a null geometry.
    static UVArray getUVValuesLocal(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set);
    /// Writes the slot, which is made where there is none of the right size. Another number of
    /// values than of vertices writes nothing.
    static void setLocalUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                            const UVArray& uvs);

    /// Appends the values of a plain geometry, or of all surfaces of a shell. A surface without
    /// the slot gives a zero for each of its vertices.
    static void getNoCompactUVValues(const osg::NodePtr& node, kyUVTypes::UVSet set, UVArray& uvs);
    /// The same by the container id of each geometry's node; an empty array without the slot.
    static void getNoCompactUVValues(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                     std::map<unsigned int, UVArray>& uvsOfNode);
    /// Takes what the array form of getNoCompactUVValues gives. Surfaces for which the array is too
    /// short stay as they are; for a plain geometry its size must be right.
    static void setNoCompactUVValues(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                     const UVArray& uvs);

    /// 0 for a null geometry and without positions.
    static unsigned long long getLocalVertexCount(const osg::GeometryPtr& geometry);
    /// The size of a slot of any kind; 0 for a null geometry and an empty slot.
    static unsigned long long getLocalUVCount(const osg::GeometryPtr& geometry,
                                              kyUVTypes::UVSet set);

    // UVs moved about. The operations change the UVs of vertices in a slot that has UVs, and leave
    // all else. Through a compact mesh a vertex that surfaces share is changed once and gets the
    // same value on all of them. A surface without the slot stays without. Nothing changes for a
    // null geometry, null ids or none. Ids that no vertex has are passed over.
    //
    // ids  [count]  vertices, in any order. Without a compact mesh one that stands there twice is
    //               changed twice
    //
    // Linear in ids; where there is a compact mesh, in the geometry.

    /// (u, v) becomes (u + du, v + dv).
    static void translateUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                            float du, float dv);
    /// Makes the distance from a centre larger by a factor in u and one in v; 0 puts the vertices
    /// on the line through the centre, a negative one mirrors them.
    static void scaleUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                        kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                        const osg::Vector<float, 2>& center, float scaleU, float scaleV);
    /// Turns the vertices around a centre, from u to v, by the angle of which sine and cosine are
    /// given, in this order.
    static void rotateUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                         kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                         const osg::Vector<float, 2>& center, float sine, float cosine);
    /// The lowest and the highest u and v of some vertices; what is no number counts for nothing.
    /// Without ids the box is upside down, from the largest float to the least. `min` and `max`
    /// stay as they are where there are no UVs.
    static void getUVBoundingBox(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 kyUVTypes::UVSet uvSet, const unsigned int* ids,
                                 unsigned int count, osg::Vector<float, 2>& min,
                                 osg::Vector<float, 2>& max);

    /// Scales each island so that the unit square of UVs stands for a patch of worldWidth by
    /// worldHeight: the area of the island's UVs becomes its area in the world by that of the
    /// patch. Islands without UV area keep their size.
    ///
    /// selectedOnly  only the islands of the list IslandSeeds, each about its own centre, the mean
    ///               of its vertices. Else all islands, and their centres move away from the mean
    ///               of all UVs, each by its island's factor
    ///
    /// A UV that is no number stays none; it counts in the number of vertices that a mean is over.
    /// Triangles with a corner that is nowhere, in UVs or in the world, do not count in the areas.
    ///
    /// `Failure`, and nothing changes, for an invalid geometry, a patch whose area is not above 0
    /// and finite, and where there is no selection. A slot without UVs fails too, but through a
    /// compact mesh, which has zeros for it that the surfaces get. A selection of vertices that
    /// there aren't fails through a mesh; without one they stand for the first island.
    ///
    /// Linear in the geometry.
    static kyUVTypes::ReturnCode scaleToMatchWorldSize(const osg::GeometryPtr& geometry,
                                                       const osg::NodePtr& node,
                                                       kyUVTypes::UVSet uvSet, float worldWidth,
                                                       float worldHeight, bool selectedOnly);

    // The lattice: UVs bent by a grid of control points over a rectangle. A UV goes to the point
    // of the Bézier surface of the control points that has its parameters, its place in the
    // rectangle. All changes start from the UVs that a deformer remembers, so they don't add up.
    //
    //   startLatticeSession     opens a session for a grid; not while a deformer of an earlier
    //                           session lives
    //   getLatticeDeformer      what one geometry needs, as often as there are geometries
    //   applyLatticeDeform      for each change of the control points
    //   finishLatticeDeformer   frees a deformer; UVs stay as they are
    //
    // Deformers and meta data are handed out as pointers into which only these operations look.

    /// Sets the grid up and hands out the id of the session.
    ///
    /// resU, resV  control points along u and v: at least 2, at most 35, beyond which the
    ///             binomial coefficients of the surface outgrow their type. From 25 on some
    ///             coefficients are truncated to 1 below their value, so that the surface of an
    ///             even grid is off by up to 0.016 of its UVs with 25, by 0.0008 with more
    /// min, max    the rectangle
    ///
    /// False, and nothing changes, while there are deformers, for a grid of another size, and
    /// unless `min` is below `max` in u and v and both are finite.
    static bool startLatticeSession(unsigned int resU, unsigned int resV,
                                    const osg::Vector<float, 2>& min,
                                    const osg::Vector<float, 2>& max, unsigned int& sessionId);
    /// A deformer that remembers the present UVs of some vertices, which it will move. To be freed
    /// by finishLatticeDeformer; it keeps geometry and node alive until then. It is of the compact
    /// mesh as that is now: once another slot is asked for, or the geometry changes otherwise, get
    /// another one.
    ///
    /// ids  [count]  in any order, repeats allowed; those that no vertex has are passed over
    ///
    /// Null for an id that is not that of the last session, an invalid geometry, a slot without
    /// UVs, and without an id that a vertex has.
    static void* getLatticeDeformer(unsigned int sessionId, const osg::GeometryPtr& geometry,
                                    const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                    const unsigned int* ids, unsigned int count);
    /// Writes the UVs of all vertices of a deformer, on all surfaces.
    ///
    /// uvSet          the slot that the deformer was made for
    /// amount         0 writes the remembered UVs, 1 those of the surface, what lies between a
    ///                mean of both. Numbers beyond are limited; what is no number counts as 0
    /// controlPoints  [resU * resV]  row by row, u fastest; where their number is another, no UV
    ///                is written
    ///
    /// UVs outside the rectangle follow the same polynomials, which grow fast there. False only
    /// for a null deformer. On all threads, resU * resV multiplications a vertex and component;
    /// the result is the same for any number of threads.
    static bool applyLatticeDeform(void* deformer, kyUVTypes::UVSet uvSet, float amount,
                                   const std::vector<osg::Vector<float, 2>>& controlPoints);
    /// A copy of the vertices that a deformer moves and of the UVs that it remembers, for who wants
    /// to put them back. To be freed by destroyLatticeMetaData. Null for a null deformer.
    static void* getMetaDataofLatticeDeformer(void* deformer);
    /// Gives a deformer what getMetaDataofLatticeDeformer gave, which is copied; UVs are not
    /// written. False, and nothing changes, for null pointers and where a vertex is none of the
    /// deformer's geometry.
    static bool setMetaDataofLatticeDeformer(void* deformer, void* metaData);
    /// Frees meta data and makes the pointer null. Does nothing for null.
    static void destroyLatticeMetaData(void*& metaData);
    /// Frees a deformer and makes the pointer null. False for null, and when no deformer is out.
    static bool finishLatticeDeformer(void*& deformer);

    // Slots.

    /// A new property of zeros, one for each vertex, in no slot yet and with no reference; NullFC
    /// for a null geometry and without positions.
    static osg::GeoTexCoords2fPtr createEmptyUVSet(const osg::GeometryPtr& geometry);
    /// Puts a property into a slot, null to empty it, and brings the index mapping along. False for
    /// a null geometry.
    static bool setTexSlot(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                           const osg::GeoTexCoordsPtr& property);
    /// The same by container id, for who outlives handles. False if that is no geometry any more.
    static bool setTexSlot(unsigned int geometryId, kyUVTypes::UVSet set,
                           const osg::GeoTexCoordsPtr& property);
    /// Says in the index mapping that the indices address the slot, or that they don't. Only where
    /// there are indices and one mapping entry; other geometries are left alone.
    static void addToIndexMapping(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set);
    static void removeFromIndexMapping(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set);

    /// Is there a property of any kind in the slot? For a shell, in that of any surface, active or
    /// not. False for a node without a valid geometry.
    static bool hasUVSet(const osg::NodePtr& node, kyUVTypes::UVSet set);
    /// Empties the slot of a plain geometry, or of the active surfaces of a shell.
    static void removeUVSet(const osg::NodePtr& node, kyUVTypes::UVSet set);
    /// The nodes at or below a node whose geometry has no such slot. Shells count as one geometry.
    static std::set<osg::NodePtr> getNodesWithoutUVSet(const osg::NodePtr& node,
                                                       kyUVTypes::UVSet set);
    /// The same, entered into a set.
    static void collectNodesWithoutUVSet(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                         std::set<osg::NodePtr>& nodes);
    /// The visible geometry at or below a node: plain geometries, and the surfaces of shells that
    /// are on a shown side.
    static std::vector<osg::NodePtr> getVisibleGeometryChildren(const osg::NodePtr& node);

    /// Writes what all properties hold at the vertices of the list FreeVertices, for debugging.
    static void debugOutPntsInfo(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 std::ostream& stream);

    // Replay.

    /// Brings a geometry into the state that a record of a change of topology leads to, and its
    /// compact mesh along. The record must fit the present state.
    ///
    /// data  a kyTopologyData, from kyTopologyBridge::getNext or getPrev; it stays as it is, so
    ///       that it can be replayed again. Null, or a record without a shuffle, does nothing.
    ///
    /// UV values are moved with their vertices, no more: the caller writes those of the new state
    /// afterwards.
    static void applyTopology(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet set, void* data);

private:
    friend struct kyUVUtilsTestAccess;

    kyUVUtils() = default;

    /// Gives a bridge child records: one for a plain geometry, one for each child of a shell's
    /// node, active or not. A null bridge is left alone.
    static void createChildData(kyTopologyBridge* bridge, const osg::GeometryPtr& geometry,
                                const osg::NodePtr& node);
    /// Where the operation on one child of `parent` writes; null without a bridge, and for a node
    /// that is no child of a shell's. createChildData has run before.
    static std::unique_ptr<TopologyOpOutData> getChildData(kyTopologyBridge* bridge,
                                                           const osg::GeometryPtr& geometry,
                                                           const osg::NodePtr& parent,
                                                           const osg::NodePtr& child);
    /// Makes sure that a slot has one value for each vertex: one of another size, or none, is
    /// replaced by zeros. A slot of the right size stays, of whatever kind. Does nothing for null.
    static void initTexCoordsField(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set);
    /// Gives a slot these values and their number. False without a slot of UVs.
    static bool assignTexCoords(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                                const UVArray& uvs);
    /// Gives the vertices in a list their values in uvs, [vertex]; ids beyond it are passed over.
    /// False unless the slot is there and of that size.
    static bool assignTexCoords(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set,
                                const UVArray& uvs, const std::vector<unsigned int>& vertexIds);

    // The solver on exactly one geometry; defined beside the operations that they serve.

    static kyUVTypes::ReturnCode
    doUnfoldGeometryUnfold3D(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                             const kyUnfold3D::UnfoldSettings& unfoldSettings,
                             const kyUnfold3D::PackSettings& packSettings,
                             const std::vector<unsigned int>& horizontal,
                             const std::vector<unsigned int>& vertical);
    /// What pack and optimise share: the selection goes to the solver, its answer to the slot.
    static kyUVTypes::ReturnCode editUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                                 ESelectMode selectMode, const SolverEdit& edit);
    /// False without triangles, and where the slot is missing.
    static bool doCreateUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                            ECreateUVMethod method);
    /// positions      [vertexCount]
    /// vertexIslands  [vertexCount]  the island of each vertex, 0xFFFFFFFF for none
    /// Returns        [vertexCount]
    static UVArray doCreateUVsFromIslandsAABBProjection(
        unsigned int vertexCount, const osg::Point<float, 3>* positions, unsigned int islandCount,
        const std::vector<unsigned int>& vertexIslands);

    // Islands of exactly one geometry; defined beside the operations that they serve.

    /// vertexIslands   [vertexCount]  written: the island of each vertex, 0xFFFFFFFF for none
    /// islandVertices  [island]       written: its vertices, ascending
    ///
    /// Both come empty. Indices must be below vertexCount.
    static void doFindUVIslands(const osg::GeoIndicesPtr& indices, unsigned int vertexCount,
                                std::vector<unsigned int>& vertexIslands,
                                std::vector<std::vector<unsigned int>>& islandVertices);
    /// As findUVIslands, on the geometry as it stands. Without indices or three-float positions
    /// nothing is appended.
    static void doFindUVIslands(const osg::GeometryPtr& geometry, const unsigned int* ids,
                                unsigned int count, bool wholeIslandsOnly,
                                std::vector<unsigned int>& islandTriangles,
                                std::vector<unsigned int>& islandTriangleCounts,
                                std::vector<unsigned int>& islandVerts,
                                std::vector<unsigned int>& islandVertCounts);
    /// Empty without indices, or when their number is no multiple of 3.
    static FlatEdgeList getAllEdges(const osg::GeometryPtr& geometry);

    /// As scaleToMatchWorldSize, on the geometry as it stands, for the islands of some vertices;
    /// null or no ids stand for all islands. Positions go to the world by `toWorld`.
    static kyUVTypes::ReturnCode
    doScaleToMatchWorldSize(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                            const osg::TransformationMatrix<float>& toWorld, float worldWidth,
                            float worldHeight, const unsigned int* ids, unsigned int count);
    /// The grid of the present session; 20 by 20 over the unit square before the first.
    static LatticeGrid& latticeGrid();

    // Paths on exactly one geometry; defined beside the operations that they serve.

    /// As findEdgesShortestPath, on the geometry as it stands; appends. Nothing without indices or
    /// three-float positions.
    static void doFindShortestPath(const osg::GeometryPtr& geometry, const unsigned int* picked,
                                   unsigned int count, bool alongBorders, FlatEdgeList& edges);
    /// As findContiguousEdges, on the geometry as it stands.
    static FlatEdgeList doFindContiguousEdges(const osg::GeometryPtr& geometry, const Edge& start,
                                              float maxSurfaceAngle, float maxEdgeAngle,
                                              bool bordersOnly, bool stopAtBorders);

    // The border list; defined beside updateBorderEdges.

    /// Searches the triangles and writes the list. An invalid geometry and a missing mesh leave it.
    static void makeBorderEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                kyUVTypes::UVSet uvSet);
    /// Have triangles changed since the list was last made for this slot? False without geometry or
    /// node.
    static bool getBorderDirty(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                               kyUVTypes::UVSet uvSet);
    static void setBorderClean(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                               kyUVTypes::UVSet uvSet);

    // Edges held straight, of exactly one geometry and in its own ids; defined beside the
    // operations that they serve.

    static std::vector<Edge> getConstrainedEdges(const osg::GeometryPtr& geometry,
                                                 kyUVTypes::EdgeConstraint constraint);
    /// False for a null geometry.
    static bool setConstrainedEdges(const osg::GeometryPtr& geometry,
                                    const std::vector<Edge>& edges,
                                    kyUVTypes::EdgeConstraint constraint);
    /// Fills a list with edges, or makes it null without any. Was it touched? Not where it is null
    /// and stays so.
    static bool makeConstrainedEdgesTempIndices(const std::vector<Edge>& edges,
                                                osg::GeoTmpIndexEditInterface& list);
    /// Fills the list of a direction if it has another stamp than this one or is null, and takes
    /// its new stamp. Was the list touched, or have the edges changed since it was last filled?
    static bool renewConstrainedEdgesTempIndices(const osg::GeometryPtr& geometry,
                                                 kyUVTypes::EdgeConstraint constraint,
                                                 unsigned int& stamp);
    /// Fills both lists of a shell from what its surfaces hold.
    static void fillShellTempIndices(const osg::NodePtr& node);
    /// The pairs as edges; none for a null pointer.
    static std::vector<Edge> getEdges(const unsigned int* pairs, unsigned int count);

    // Sewing; defined beside the operations that they serve. Lists of edges hold two ids each.

    /// Sews border edges that the caller has chosen among `allEdges`, which are all that a partner
    /// may be among. Everything else is as for the public form. Neither list may be one that the
    /// sew rewrites.
    static void sewAlongEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, const unsigned int* allEdges,
                              unsigned int allCount, const unsigned int* sewEdges,
                              unsigned int sewCount, bool matchUVs, kyTopologyBridge* bridge);
    /// Does to each surface that has edges to sew what was done to the mesh. Ids are F ids.
    static void sewSurfaces(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet uvSet, std::vector<Edge> allEdges,
                            const FlatEdgeList& sewEdges, bool matchUVs, kyTopologyBridge* bridge);
    /// Sews exactly this geometry; ids are its own. Pairs with an id that is no vertex are passed
    /// over.
    ///
    /// out        may be null
    /// unsewable  receives the edges that lie on others in threes and more, and the edges inside
    ///            the mesh that keep places open; may be null
    static void doSewAlongBorders(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                                  const unsigned int* allEdges, unsigned int allCount,
                                  const unsigned int* sewEdges, unsigned int sewCount,
                                  bool matchUVs, TopologyOpOutData* out,
                                  std::unordered_set<Edge, EdgeHash>* unsewable);
    /// Appends, for each place at which several of the edges lie, the second one that reached it.
    /// With `otherIslandOnly` one of the island of the first one does not count.
    static void doFindCommonBorders(const osg::GeometryPtr& geometry, const unsigned int* edges,
                                    unsigned int count, bool otherIslandOnly, FlatEdgeList& out);
    /// bordersOf  gives the edges to choose among, in ids of the geometry that the scope works on
    static void
    sewCommonBorders(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                     kyUVTypes::UVSet uvSet,
                     const std::function<FlatEdgeList(const CompactMeshScope&)>& bordersOf,
                     bool otherIslandOnly, bool matchUVs, kyTopologyBridge* bridge);

    bool useCompactMesh_ = true;
    bool fillShading_ = false;
    ESelectMode selectMode_ = SelectAll;
    kyUVTypes::UVSet selectUVSet_ = kyUVTypes::UVSet0;
    unsigned int latticeSessionId_ = 0; ///< of the last session; counts up and is never reused
    unsigned int latticeUserCount_ = 0; ///< deformers that live
};
