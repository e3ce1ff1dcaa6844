#include "UVUtils/editing/PathSearch.h"

#include "OpenSG/Prefetch.h"

#include <algorithm>

namespace
{

constexpr unsigned int none = 0xFFFFFFFFU;

} // namespace

PathSearch::PathSearch(const EdgeGraph& graph, std::span<const osg::Pnt3f> positions)
    : graph_(graph)
{
    vertices_.reserve(positions.size());
    for (const osg::Pnt3f& position : positions)
        vertices_.push_back({position, PathHeap::unreached});
}

float PathSearch::run(unsigned int start, unsigned int target)
{
    reset(start);
    while (!heap_.isEmpty()) {
        const PathHeap::Entry nearest = heap_.pop();
        if (nearest.key == PathHeap::unreached || nearest.vertex == target)
            break;
        prefetchNext();
        relaxEdgesAt(nearest.vertex);
    }
    return vertices_[target].distance;
}

std::vector<unsigned int> PathSearch::pathTo(unsigned int target) const
{
    std::vector<unsigned int> path;
    for (unsigned int vertex = target; vertex != none; vertex = previous_[vertex])
        path.push_back(vertex);
    std::reverse(path.begin(), path.end());
    return path;
}

void PathSearch::reset(unsigned int start)
{
    for (Vertex& vertex : vertices_)
        vertex.distance = PathHeap::unreached;
    vertices_[start].distance = 0.0F;
    previous_.assign(vertices_.size(), none);
    heap_.fill(static_cast<unsigned int>(vertices_.size()), start);
}

/// What is on top of the heap now is most often what comes next. Where the vertices of a mesh stand
/// in no order, a search does little but wait for memory, unless it asks for it ahead of time.
void PathSearch::prefetchNext() const
{
    if (heap_.isEmpty() || heap_.top().key == PathHeap::unreached)
        return;
    for (const unsigned int neighbour : graph_.neighbours(heap_.top().vertex))
        osg::prefetch(&vertices_[neighbour]);
}

/// Neighbours that were popped before are never passed again: none of them is further from the
/// start.
void PathSearch::relaxEdgesAt(unsigned int vertex)
{
    const Vertex from = vertices_[vertex];
    for (const unsigned int neighbour : graph_.neighbours(vertex)) {
        Vertex& to = vertices_[neighbour];
        if (to.distance <= from.distance)
            continue;
        const float distance = from.distance + (from.position - to.position).length();
        if (!(to.distance > distance))
            continue;
        to.distance = distance;
        previous_[neighbour] = vertex;
        heap_.lowerKey(neighbour, distance);
        graph_.prefetchNeighbours(neighbour); // its turn comes
    }
}
