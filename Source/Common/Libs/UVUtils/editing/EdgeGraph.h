#pragma once

#include "OpenSG/Prefetch.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// The edges of triangles as a graph: the neighbours of each vertex, in one packed array.
///
/// Neighbours stand in the order in which their edges first come up when the triangles (a, b, c)
/// are walked edge by edge, (a, b), (b, c), (c, a). A vertex that a triangle names twice is its own
/// neighbour.
class EdgeGraph
{
public:
    enum Kind : std::int32_t
    {
        AllEdges,
        BorderEdges ///< those that exactly one side of a triangle runs along
    };

    /// triangles  three vertices each, below vertexCount; their number is a multiple of 3
    ///
    /// Linear in triangles plus vertices.
    EdgeGraph(std::span<const unsigned int> triangles, unsigned int vertexCount, Kind kind);

    std::span<const unsigned int> neighbours(unsigned int vertex) const
    {
        return {neighbours_.get() + offsets_[vertex], offsets_[vertex + 1] - offsets_[vertex]};
    }

    /// Asks for the neighbours of a vertex that are read in a moment.
    void prefetchNeighbours(unsigned int vertex) const
    {
        osg::prefetch(neighbours_.get() + offsets_[vertex]);
    }

    /// The vertices with a border edge, whatever the kind of the graph, ascending.
    std::span<const unsigned int> borderVertices() const { return borderVertices_; }

private:
    std::vector<unsigned int> offsets_; ///< [vertexCount + 1]
    std::unique_ptr<unsigned int[]> neighbours_;
    std::vector<unsigned int> borderVertices_;
};
