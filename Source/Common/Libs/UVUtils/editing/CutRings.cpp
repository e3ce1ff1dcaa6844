#include "UVUtils/editing/CutRings.h"

#include "OpenSG/IndexSpan.h"
#include "UVUtils/model/SortAndDropRepeats.h"

#include <algorithm>
#include <cstddef>

namespace
{

/// A vertex, and one of the edges at it.
struct EdgeAtVertex
{
    unsigned int vertex;
    Edge edge;
};

constexpr unsigned int noCutVertex = 0xFFFFFFFF;

/// A triangle at a cut vertex, and what cut vertices its corners are.
struct CutTriangle
{
    unsigned int place; ///< of its first corner in the index list
    unsigned int corners[3];
    unsigned int cutVertices[3]; ///< noCutVertex for other vertices
};

/// [vertex] 1 or 0, a byte each: this is looked up for every corner of the mesh.
using Flags = std::vector<unsigned char>;

/// Where the triangles with a flagged corner begin.
template <class Id>
std::vector<unsigned int> placesOfFlagged(std::span<const Id> triangles, const Flags& isFlagged)
{
    std::vector<unsigned int> places;
    for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3)
        if ((isFlagged[triangles[i]] | isFlagged[triangles[i + 1]] | isFlagged[triangles[i + 2]]) !=
            0)
            places.push_back(static_cast<unsigned int>(i));
    return places;
}

Flags flagsOf(const std::vector<unsigned int>& ids, unsigned int vertexCount)
{
    Flags isFlagged(vertexCount);
    for (const unsigned int id : ids)
        isFlagged[id] = 1;
    return isFlagged;
}

unsigned int numberOf(unsigned int vertex, const CutVertices& cut)
{
    const auto found = std::lower_bound(cut.ids.begin(), cut.ids.end(), vertex);
    return found == cut.ids.end() || *found != vertex
               ? noCutVertex
               : static_cast<unsigned int>(found - cut.ids.begin());
}

template <class Id>
std::vector<CutTriangle> findCutTriangles(std::span<const Id> triangles, unsigned int vertexCount,
                                          const CutVertices& cut)
{
    std::vector<CutTriangle> found;
    for (const unsigned int place : placesOfFlagged(triangles, flagsOf(cut.ids, vertexCount))) {
        CutTriangle& triangle = found.emplace_back();
        triangle.place = place;
        for (unsigned int k = 0; k < 3; ++k) {
            triangle.corners[k] = triangles[place + k];
            triangle.cutVertices[k] = numberOf(triangle.corners[k], cut);
        }
    }
    return found;
}

CutCorner cornerOf(const CutTriangle& triangle, unsigned int k)
{
    const unsigned int first = k == 0 ? 1 : 0;
    const unsigned int second = k == 2 ? 1 : 2;
    return {triangle.place + k, triangle.corners[first], triangle.corners[second], 0};
}

} // namespace

bool CutVertices::isCut(const Edge& edge) const
{
    return std::binary_search(edges.begin(), edges.end(), edge);
}

CutVertices collectCutVertices(std::span<const unsigned int> edges, unsigned int vertexCount)
{
    CutVertices cut;
    std::vector<EdgeAtVertex> ends;
    for (std::size_t i = 0; i + 2 <= edges.size(); i += 2) {
        const Edge edge(edges[i], edges[i + 1]);
        if (edge.second >= vertexCount)
            continue;
        ends.push_back({edges[i], edge});
        ends.push_back({edges[i + 1], edge});
        cut.edges.push_back(edge);
    }
    std::stable_sort(ends.begin(), ends.end(), [](const EdgeAtVertex& a, const EdgeAtVertex& b) {
        return a.vertex < b.vertex;
    });
    for (const EdgeAtVertex& end : ends) {
        if (!cut.ids.empty() && cut.ids.back() == end.vertex)
            continue;
        cut.ids.push_back(end.vertex);
        cut.startEdges.push_back(end.edge);
    }
    sortAndDropRepeats(cut.edges);
    return cut;
}

CutRings collectCutRings(const osg::GeoIndicesPtr& indices, unsigned int vertexCount,
                         const CutVertices& cut)
{
    const std::vector<CutTriangle> triangles = osg::withIndices(
        indices, [&](const auto ids) { return findCutTriangles(ids, vertexCount, cut); });
    return {cut.ids.size(), [&](const auto& add) {
                for (const CutTriangle& triangle : triangles)
                    for (unsigned int k = 0; k < 3; ++k)
                        if (triangle.cutVertices[k] != noCutVertex)
                            add(triangle.cutVertices[k], cornerOf(triangle, k));
            }};
}
