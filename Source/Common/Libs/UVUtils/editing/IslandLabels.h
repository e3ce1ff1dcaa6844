#pragma once

#include <span>
#include <vector>

/// The island of a vertex that no triangle uses.
inline constexpr unsigned int noIsland = 0xFFFFFFFFU;

/// The islands of a triangle list: triangles that hang together through the vertices they name.
///
/// Islands are numbered from 0 in the order in which their first triangles stand in the list.
struct IslandLabels
{
    std::vector<unsigned int> islandOfVertex; ///< [vertexCount] noIsland where no triangle is
    unsigned int islandCount = 0;
};

/// Finds the islands.
///
/// triangles    three vertices each, below vertexCount; what is left over at the end is passed over
/// vertexCount  entries of the answer
///
/// One pass over the triangles and two over the vertices, without a sort or a table of edges.
IslandLabels labelIslands(std::span<const unsigned int> triangles, unsigned int vertexCount);

/// The vertices of each island, ascending. Vertices in no island stand nowhere.
std::vector<std::vector<unsigned int>> verticesOfIslands(const IslandLabels& labels);
