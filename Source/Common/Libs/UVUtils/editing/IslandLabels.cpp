// Union-find over labels instead of vertices: a label is made where a triangle begins something
// new, so there are few of them, and they stay in the cache while the vertices run by.

#include "UVUtils/editing/IslandLabels.h"

#include <cstddef>

namespace
{

/// Labels that were found to be of one island point to a lower one; the lowest is its own parent
/// and stands for the island.
class LabelForest
{
public:
    unsigned int add()
    {
        const auto label = static_cast<unsigned int>(parents_.size());
        parents_.push_back(label);
        return label;
    }

    unsigned int rootOf(unsigned int label)
    {
        while (parents_[label] < label) {
            // Halving the path keeps long chains of islands that grow together from being walked
            // again and again.
            parents_[label] = parents_[parents_[label]];
            label = parents_[label];
        }
        return label;
    }

    /// Makes one island of two roots; the lower one stays a root and is returned.
    unsigned int join(unsigned int a, unsigned int b)
    {
        if (b < a) {
            parents_[a] = b;
            return b;
        }
        parents_[b] = a;
        return a;
    }

    /// [label] The number of its island; islandCount becomes the number of islands.
    std::vector<unsigned int> numberIslands(unsigned int& islandCount)
    {
        std::vector<unsigned int> islandOfLabel(parents_.size());
        islandCount = 0;
        // Parents are lower than their labels, so each has its number before it is asked for.
        for (unsigned int label = 0; label < parents_.size(); ++label)
            islandOfLabel[label] =
                parents_[label] == label ? islandCount++ : islandOfLabel[parents_[label]];
        return islandOfLabel;
    }

private:
    std::vector<unsigned int> parents_;
};

/// Gives the corners of each triangle one label.
LabelForest labelTriangles(std::span<const unsigned int> triangles,
                           std::vector<unsigned int>& labelOfVertex)
{
    LabelForest labels;
    for (std::size_t first = 0; first + 2 < triangles.size(); first += 3) {
        const unsigned int start = labelOfVertex[triangles[first]];
        unsigned int label = start == noIsland ? labels.add() : labels.rootOf(start);
        for (const unsigned int vertex : triangles.subspan(first, 3)) {
            unsigned int& own = labelOfVertex[vertex];
            if (own != noIsland)
                label = labels.join(label, labels.rootOf(own));
            own = label;
        }
    }
    return labels;
}

} // namespace

IslandLabels labelIslands(std::span<const unsigned int> triangles, unsigned int vertexCount)
{
    IslandLabels result;
    result.islandOfVertex.assign(vertexCount, noIsland);
    LabelForest labels = labelTriangles(triangles, result.islandOfVertex);
    const std::vector<unsigned int> islandOfLabel = labels.numberIslands(result.islandCount);
    for (unsigned int& label : result.islandOfVertex)
        if (label != noIsland)
            label = islandOfLabel[label];
    return result;
}

std::vector<std::vector<unsigned int>> verticesOfIslands(const IslandLabels& labels)
{
    std::vector<unsigned int> sizes(labels.islandCount, 0);
    for (const unsigned int island : labels.islandOfVertex)
        if (island != noIsland)
            ++sizes[island];

    std::vector<std::vector<unsigned int>> vertices(labels.islandCount);
    for (unsigned int island = 0; island < labels.islandCount; ++island)
        vertices[island].reserve(sizes[island]);
    for (unsigned int vertex = 0; vertex < labels.islandOfVertex.size(); ++vertex)
        if (labels.islandOfVertex[vertex] != noIsland)
            vertices[labels.islandOfVertex[vertex]].push_back(vertex);
    return vertices;
}
