#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/repair/TrianglesOfEdges.h"

#include <cstdint>
#include <span>
#include <vector>

class kyTopologyBridge;

/// Finds and removes what is not manifold in the triangles of one geometry.
///
///     singular vertex                       singular edge
///
///     1 --- 2                               three or more triangles run along it; a triangle that
///       \  /                                names a vertex twice runs along an edge twice
///        0    triangles that hang together
///       /  \  by no edge meet in it
///     3 --- 4
///
/// Triangles that share an edge, however many do, are of one group, and so are all that can be
/// reached from one of them in this way. Vertex 0 is singular for it is in two groups; where the
/// triangles of a single group meet in a point, that point isn't.
///
/// A vertex is repaired by giving each group but the first a copy of it, an edge by cutting along
/// it. A cut may make groups of one, and so new singular vertices: who wants a manifold looks again
/// until nothing is found. That ends. Each fix of what was found makes at least one new vertex,
/// each vertex that a triangle named is still named by one, and there are three corners a triangle.
///
/// Shells and nodes are not known here; each surface of a shell is a geometry of its own. A
/// geometry that isn't fit (null, without indices or positions, of an index count that is no
/// multiple of 3, with indices beyond the positions) has nothing to find and is left alone; nothing
/// is reported.
///
/// What was found out about the triangles is kept until a fix, and a change from elsewhere isn't
/// seen: make one object for a geometry and a run. The geometry itself is not held. An object that
/// outlives it finds nothing.
class kyTopologyRepair
{
public:
    /// Triangles that hang together through shared edges.
    struct TriangleGroup
    {
        std::vector<unsigned int> triangles; ///< in the order of their discovery
        std::vector<unsigned int> vertices;  ///< ascending, each once
    };

    /// set  the slot in which the sides of a repaired edge move apart
    kyTopologyRepair(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set);
    ~kyTopologyRepair();
    kyTopologyRepair(const kyTopologyRepair& other);
    kyTopologyRepair& operator=(const kyTopologyRepair& other);

    /// Ascending. A vertex that no triangle names is not singular. Linear in triangles and
    /// vertices, but for the sorting of the edges at one vertex and of the vertices of a group.
    std::vector<unsigned int> findSingularVertices();
    /// Ascending, the lower id of each first.
    FlatEdgeList findSingularEdges();

    /// Find and fix; return how many were found. Nothing is recorded.
    unsigned int fixSingularVertices();
    unsigned int fixSingularEdges();

    /// Gives each group but the first that has one of the vertices a copy of it. New vertices, with
    /// all properties of the old ones, follow these: group after group, ascending in each.
    /// Selections and constraints keep the ids that they had, and none names a new vertex.
    ///
    /// vertices  in any order; those that are in one group or none, or beyond the positions, stay
    ///           as they are, and repeats count once
    /// bridge    receives the record at its top level, but for the constraints; may be null
    ///
    /// Does nothing and records nothing without vertices, and without a find since the last fix.
    void fixSingularVertices(const std::vector<unsigned int>& vertices, kyTopologyBridge* bridge);
    /// Cuts along the edges as doCutAlongEdges does, and moves the UVs of the sides apart. Sheets
    /// that meet in an edge get a pair of vertices each. Two triangles that close a sheet there may
    /// stay together, or come apart: that depends on the order of the triangles. Selections and
    /// constraints name all copies. Does nothing with less than one edge.
    ///
    /// bridge  receives the record at its top level; may be null
    void fixSingularEdges(const FlatEdgeList& edges, kyTopologyBridge* bridge);

private:
    enum Dirty : std::uint32_t
    {
        GroupsDirty = 1,
        EdgesDirty = 2,
        AllDirty = 3
    };

    osg::GeometryPtr getGeometry() const;
    void buildEdgeData();
    void buildTriangleData();
    std::vector<TriangleGroup> findTriangleGroups() const;
    void fillTriangleGroup(unsigned int seed, std::vector<unsigned int>& group,
                           std::vector<char>& isVisited) const;
    static std::span<const unsigned int> getTriangleVertexIds(std::span<const unsigned int> indices,
                                                              unsigned int triangle);
    void makeDirty();

    unsigned int geometryId_; ///< 0 for a null geometry
    TrianglesOfEdges edgeTriangles_;
    std::vector<TriangleGroup> triangleGroups_;
    kyUVTypes::UVSet uvSet_;
    std::uint32_t dirty_ = AllDirty;
};
