#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/parameterisation/NodeLayout.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The border of an island as closed loops, walked with the surface on the left.
///
/// A point is one pass of a loop through a vertex: the border may touch itself in a vertex, which
/// then has several points, one for each fan of triangles. Points are numbered loop by loop; edge p
/// runs from point p to next(p).
///
///          outside
///      q <--- p <--- o          next(p) = q, previous(p) = o
///       \    / \    /           edge p runs from p to q
///         surface
class Border
{
public:
    explicit Border(const IslandMesh& mesh);

    int size() const { return static_cast<int>(vertexOf_.size()); }
    int vertexOf(int point) const { return vertexOf_[index(point)]; }
    int next(int point) const { return next_[index(point)]; }
    int previous(int point) const { return previous_[index(point)]; }
    /// Vertices less edges plus triangles of the island, each fan of triangles with a vertex of its
    /// own: 1 for a disk, one less for each hole.
    int eulerCharacteristic() const { return eulerCharacteristic_; }
    /// Length of edge p in space.
    double restLength(int edge) const { return restLength_[index(edge)]; }

    /// Way along the border from a point to the nearer end of an edge, in lengths of space; no
    /// longer than the shortest way, and infinite where there is none.
    double wayToEdge(int point, int edge) const;
    /// Whether the vertex of a point is an end of an edge.
    bool touches(int point, int edge) const;
    /// All points of the vertex of `point`, that one included.
    std::span<const int> pointsOfSameVertex(int point) const;

private:
    static std::size_t index(int i) { return static_cast<std::size_t>(i); }
    void traceLoops(const IslandMesh& mesh);
    void countCells(const IslandMesh& mesh);
    void measureWays(const IslandMesh& mesh);
    double way(int pointA, int pointB) const;

    int eulerCharacteristic_ = 0;
    std::vector<int> vertexOf_;
    std::vector<int> next_;
    std::vector<int> previous_;
    std::vector<int> loopOf_;
    std::vector<double> restLength_;
    std::vector<double> wayFromFirst_; ///< along the loop, from its first point
    std::vector<double> loopLength_;   ///< [loop]
    std::vector<double> wayToPinch_;   ///< to the nearest point whose vertex has others as well
    OffsetArray<int> pointsOfVertex_;
};

/// Where the border's points lie, [point].
std::vector<Vec2> borderPositions(const Border& border, const NodeLayout& layout);

} // namespace unfold3d
