#pragma once

#include "OpenSG/GeoProperty.h"
#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/Edge.h"

#include <span>
#include <vector>

// What a cut has to look at: the vertices at its edges, and the corners of triangles there.

/// The edges of a cut, and the vertices that they end at.
struct CutVertices
{
    std::vector<unsigned int> ids; ///< ascending; a vertex's place here is its cut vertex number
    std::vector<Edge> startEdges;  ///< [cut vertex] the edge at which its sides begin to count
    std::vector<Edge> edges;       ///< ascending, each once

    bool isCut(const Edge& edge) const;
};

/// Reads a list of edges: repeats, pairs of one vertex twice and pairs that are no edge of the mesh
/// are fine. Of several edges at a vertex the first in the list is its start edge. Edges that name
/// a vertex beyond vertexCount, and an id left over at the end, are passed over.
CutVertices collectCutVertices(std::span<const unsigned int> edges, unsigned int vertexCount);

/// One corner of a triangle at a cut vertex. Its two edges go from there to `first` and `second`,
/// which for the triangle (a, b, c) are
///
///     at a: b, c      at b: a, c      at c: a, b
///
/// until the corners are put in fan order.
struct CutCorner
{
    unsigned int place = 0; ///< in the index list
    unsigned int first = 0;
    unsigned int second = 0;
    unsigned int side = 0; ///< of its vertex; corners of side 0 keep it
};

/// [cut vertex] The corners there, in index order.
using CutRings = Buckets<CutCorner>;

/// One pass over the triangles, which are below vertexCount, with a look at one flag a corner; the
/// rest follows the number of triangles at cut vertices.
CutRings collectCutRings(const osg::GeoIndicesPtr& indices, unsigned int vertexCount,
                         const CutVertices& cut);
