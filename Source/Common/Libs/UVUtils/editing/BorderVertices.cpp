#include "UVUtils/editing/BorderVertices.h"

BorderVertices::BorderVertices(std::span<const unsigned int> edges, unsigned int vertexCount)
    : isContained_(vertexCount),
      placeOfId_(std::make_unique_for_overwrite<unsigned int[]>(vertexCount))
{
    for (const unsigned int id : edges)
        isContained_[id] = 1;
    for (unsigned int id = 0; id < vertexCount; ++id) {
        if (!contains(id))
            continue;
        placeOfId_[id] = size();
        ids_.push_back(id);
    }
}
