#include "UVUtils/editing/EdgeGraph.h"

#include "UVUtils/model/Buckets.h"

#include <algorithm>

namespace
{

using Triangles = std::span<const unsigned int>;

/// [vertex] The corners there, by their places in the triangle list, ascending.
Buckets<unsigned int> cornersOfVertices(Triangles triangles, unsigned int vertexCount)
{
    return {vertexCount, [triangles](const auto& add) {
                for (unsigned int place = 0; place < triangles.size(); ++place)
                    add(triangles[place], place);
            }};
}

/// Collects the neighbours of one vertex after the other, behind each other in one array.
class NeighbourLists
{
public:
    /// neighbours  to write to
    NeighbourLists(unsigned int* neighbours, unsigned int vertexCount)
        : neighbours_(neighbours), placeOfVertex_(vertexCount)
    {}

    unsigned int end() const { return end_; }

    void beginVertex()
    {
        begin_ = end_;
        sidesAt_.clear();
    }

    /// A side of a triangle joins the vertex to this one.
    void addSide(unsigned int neighbour)
    {
        const unsigned int place = placeOfVertex_[neighbour];
        if (place >= begin_ && place < end_ && neighbours_[place] == neighbour) {
            ++sidesAt_[place - begin_];
            return;
        }
        placeOfVertex_[neighbour] = end_;
        neighbours_[end_++] = neighbour;
        sidesAt_.push_back(1);
    }

    bool hasBorderEdge() const
    {
        return std::find(sidesAt_.begin(), sidesAt_.end(), 1U) != sidesAt_.end();
    }

    void keepBorderEdges()
    {
        unsigned int kept = begin_;
        for (unsigned int place = begin_; place < end_; ++place)
            if (sidesAt_[place - begin_] == 1)
                neighbours_[kept++] = neighbours_[place];
        end_ = kept;
    }

private:
    unsigned int* neighbours_;
    std::vector<unsigned int> placeOfVertex_; ///< where it was last written, if it was
    std::vector<unsigned int> sidesAt_;       ///< [neighbour of the vertex]
    unsigned int begin_ = 0;
    unsigned int end_ = 0;
};

/// Adds the two sides that meet in a corner, the one that comes first in the triangle first.
void addSidesAt(unsigned int corner, Triangles triangles, NeighbourLists& lists)
{
    const unsigned int k = corner % 3;
    const unsigned int own = triangles[corner];
    const unsigned int next = triangles[k == 2 ? corner - 2 : corner + 1];
    const unsigned int previous = triangles[k == 0 ? corner + 2 : corner - 1];
    if (k == 0)
        lists.addSide(next);
    // A side from a vertex to itself has two corners and is one side.
    if (previous != own)
        lists.addSide(previous);
    if (k != 0)
        lists.addSide(next);
}

} // namespace

EdgeGraph::EdgeGraph(std::span<const unsigned int> triangles, unsigned int vertexCount, Kind kind)
    : offsets_(std::size_t{vertexCount} + 1),
      neighbours_(std::make_unique_for_overwrite<unsigned int[]>(2 * triangles.size()))
{
    const Buckets<unsigned int> corners = cornersOfVertices(triangles, vertexCount);
    NeighbourLists lists(neighbours_.get(), vertexCount);
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex) {
        lists.beginVertex();
        for (const unsigned int corner : corners[vertex])
            addSidesAt(corner, triangles, lists);
        if (lists.hasBorderEdge())
            borderVertices_.push_back(vertex);
        if (kind == BorderEdges)
            lists.keepBorderEdges();
        offsets_[vertex + 1] = lists.end();
    }
}
