#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/editing/EdgeGraph.h"
#include "UVUtils/editing/PathHeap.h"

#include <span>
#include <vector>

/// Finds shortest paths along the edges of a graph, by their length in space (Dijkstra 1959). Of
/// paths of equal length the heap decides, in the way that PathHeap tells.
///
/// A search costs one fill of the heap and the part of the graph nearer than its target; the
/// memory is kept for the next one.
class PathSearch
{
public:
    /// positions  [vertex] of the graph
    ///
    /// The graph outlives it.
    PathSearch(const EdgeGraph& graph, std::span<const osg::Pnt3f> positions);

    /// Searches from a vertex to another. Returns the length of the way, PathHeap::unreached when
    /// there is none.
    float run(unsigned int start, unsigned int target);

    /// The vertices on the way that the last search has found, from its start to its target.
    std::vector<unsigned int> pathTo(unsigned int target) const;

private:
    struct Vertex
    {
        osg::Pnt3f position;
        float distance; ///< from the start, as far as is known
    };

    void reset(unsigned int start);
    void prefetchNext() const;
    void relaxEdgesAt(unsigned int vertex);

    const EdgeGraph& graph_;
    std::vector<Vertex> vertices_;
    std::vector<unsigned int> previous_; ///< [vertex] on the way there
    PathHeap heap_;
};
