#include "UVUtils/editing/EdgeGraph.h"

#include "OpenSG/Prefetch.h"
#include "UVUtils/model/Buckets.h"

#include <cstddef>

namespace
{

constexpr unsigned int cornersAhead = 24;

/// The other ends of the two sides of a triangle that meet in a corner, that of the side which
/// comes first in the triangle first.
struct CornerSides
{
    unsigned int first;
    unsigned int second;
};

/// [vertex] The corners there, by their places in the triangle list, ascending.
Buckets<unsigned int> cornersOfVertices(std::span<const unsigned int> triangles,
                                        unsigned int vertexCount)
{
    return {vertexCount, [triangles](const auto& add) {
                for (unsigned int place = 0; place < triangles.size(); ++place)
                    add(triangles[place], place);
            }};
}

void prefetchCorner(unsigned int i, const Buckets<unsigned int>& corners,
                    std::span<const unsigned int> triangles)
{
    if (i < triangles.size())
        osg::prefetch(&triangles[corners.items()[i]]);
}

CornerSides sidesAt(unsigned int corner, std::span<const unsigned int> triangles)
{
    const unsigned int k = corner % 3;
    const unsigned int next = triangles[k == 2 ? corner - 2 : corner + 1];
    const unsigned int previous = triangles[k == 0 ? corner + 2 : corner - 1];
    return {k == 0 ? next : previous, k == 0 ? previous : next};
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

    void beginVertex(unsigned int vertex)
    {
        vertex_ = vertex;
        begin_ = end_;
        endsAt_.clear();
    }

    /// A side of a triangle joins the vertex to this one.
    void addSide(unsigned int neighbour)
    {
        const unsigned int place = placeOfVertex_[neighbour];
        if (place >= begin_ && place < end_ && neighbours_[place] == neighbour) {
            ++endsAt_[place - begin_];
            return;
        }
        placeOfVertex_[neighbour] = end_;
        neighbours_[end_++] = neighbour;
        endsAt_.push_back(1);
    }

    bool hasBorderEdge() const
    {
        for (unsigned int place = begin_; place < end_; ++place)
            if (isBorderEdge(place))
                return true;
        return false;
    }

    void keepBorderEdges()
    {
        unsigned int kept = begin_;
        for (unsigned int place = begin_; place < end_; ++place)
            if (isBorderEdge(place))
                neighbours_[kept++] = neighbours_[place];
        end_ = kept;
    }

private:
    /// A side from a vertex to itself ends there twice.
    bool isBorderEdge(unsigned int place) const
    {
        return endsAt_[place - begin_] == (neighbours_[place] == vertex_ ? 2 : 1);
    }

    unsigned int* neighbours_;
    std::vector<unsigned int> placeOfVertex_; ///< where it was last written, if it was
    std::vector<unsigned int> endsAt_;        ///< [neighbour of the vertex] sides that end here
    unsigned int vertex_ = 0;
    unsigned int begin_ = 0;
    unsigned int end_ = 0;
};

} // namespace

EdgeGraph::EdgeGraph(std::span<const unsigned int> triangles, unsigned int vertexCount, Kind kind)
    : offsets_(std::size_t{vertexCount} + 1),
      neighbours_(std::make_unique_for_overwrite<unsigned int[]>(2 * triangles.size()))
{
    const Buckets<unsigned int> corners = cornersOfVertices(triangles, vertexCount);
    NeighbourLists lists(neighbours_.get(), vertexCount);
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex) {
        lists.beginVertex(vertex);
        for (unsigned int i = corners.offsets()[vertex]; i < corners.offsets()[vertex + 1]; ++i) {
            prefetchCorner(i + cornersAhead, corners, triangles);
            const CornerSides sides = sidesAt(corners.items()[i], triangles);
            lists.addSide(sides.first);
            lists.addSide(sides.second);
        }
        if (lists.hasBorderEdge())
            borderVertices_.push_back(vertex);
        if (kind == BorderEdges)
            lists.keepBorderEdges();
        offsets_[vertex + 1] = lists.end();
    }
}
