#pragma once

#include "UVUtils/model/Edge.h"

#include <span>
#include <vector>

/// The edges of a triangle list and the triangles at each, in packed arrays: what
/// fillEdgeTrianglesMap gives, without a hash table. Side k of triangle t goes from its corner k to
/// the next one.
struct TrianglesOfEdges
{
    std::vector<Edge> edges;              ///< [edge] ascending, each once
    std::vector<unsigned int> edgeOfSide; ///< [3 * triangle + k]
    std::vector<unsigned int> offsets;    ///< [edge + 1] where the triangles of each begin
    /// Edge after edge, ascending at each. A triangle that runs along an edge twice, as one that
    /// names a vertex twice does, stands there twice.
    std::vector<unsigned int> triangles;

    std::span<const unsigned int> at(unsigned int edge) const
    {
        return std::span(triangles).subspan(offsets[edge], offsets[edge + 1] - offsets[edge]);
    }
};

/// triangles  three vertices each
///
/// Linear in triangles plus highest vertex, but for the sorting of the edges at one vertex.
TrianglesOfEdges collectTrianglesOfEdges(std::span<const unsigned int> triangles);
