#include "UVUtils/editing/EdgeTriangles.h"

#include "UVUtils/model/IndexView.h"

void fillEdgeTrianglesMap(std::unordered_map<Edge, std::vector<int>, EdgeHash>& trianglesOfEdge,
                          const osg::GeoIndicesPtr& indices)
{
    trianglesOfEdge.clear();
    const IndexView view(indices);
    const std::span<const unsigned int> ids = view.ids();
    if (ids.size() % 3 != 0)
        return;
    for (std::size_t i = 0; i < ids.size(); i += 3) {
        const int triangle = static_cast<int>(i / 3);
        trianglesOfEdge[Edge(ids[i], ids[i + 1])].push_back(triangle);
        trianglesOfEdge[Edge(ids[i + 1], ids[i + 2])].push_back(triangle);
        trianglesOfEdge[Edge(ids[i + 2], ids[i])].push_back(triangle);
    }
}
