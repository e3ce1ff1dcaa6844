// The shortest paths of kyUVUtils: from one picked vertex to the next along the edges of one
// geometry, and the way of a node's ids into it and back.

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/EdgeGraph.h"
#include "UVUtils/editing/IslandLabels.h"
#include "UVUtils/editing/PathCandidates.h"
#include "UVUtils/editing/PathSearch.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <iterator>

namespace
{

using Ids = std::vector<unsigned int>;

Ids idsBelow(unsigned int end, std::span<const unsigned int> ids)
{
    Ids below;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(below),
                 [end](unsigned int id) { return id < end; });
    return below;
}

/// Are all of these ids among the others, which ascend?
bool areAllIn(std::span<const unsigned int> ascending, std::span<const unsigned int> ids)
{
    return std::all_of(ids.begin(), ids.end(), [&](unsigned int id) {
        return std::binary_search(ascending.begin(), ascending.end(), id);
    });
}

/// The vertices on the shortest of the ways, the first of those that are equally short; less than
/// two when there is none.
Ids shortestWay(std::span<const PathEnds> ways, PathSearch& search)
{
    Ids path;
    float best = PathHeap::unreached;
    for (const PathEnds& ends : ways) {
        const float length = search.run(ends.start, ends.target);
        if (!(best > length))
            continue;
        path = search.pathTo(ends.target);
        best = length;
    }
    return path;
}

void appendEdges(std::span<const unsigned int> path, FlatEdgeList& edges)
{
    for (std::size_t i = 1; i < path.size(); ++i)
        edges.insert(edges.end(), {path[i - 1], path[i]});
}

/// Appends the way from each picked vertex to the next one, up to the first between which there is
/// none.
void appendLegs(std::span<const unsigned int> picked, const SeamTwins& twins, PathSearch& search,
                FlatEdgeList& edges)
{
    for (std::size_t i = 1; i < picked.size(); ++i) {
        const Ids path = shortestWay(findPathEnds(picked[i - 1], picked[i], twins), search);
        if (path.size() < 2)
            return;
        appendEdges(path, edges);
    }
}

} // namespace

void kyUVUtils::doFindShortestPath(const osg::GeometryPtr& geometry, const unsigned int* picked,
                                   unsigned int count, bool alongBorders, FlatEdgeList& edges)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const osg::GeoIndicesPtr indices = geometry->getIndices();
    if (!positions || !indices || !picked)
        return;
    const unsigned int vertexCount = positions->getSize();
    const Ids known = idsBelow(vertexCount, {picked, count});
    if (known.size() < 2)
        return;
    const IndexView view(indices);
    const EdgeGraph graph(view.triangles(), vertexCount,
                          alongBorders ? EdgeGraph::BorderEdges : EdgeGraph::AllEdges);
    if (alongBorders && !areAllIn(graph.borderVertices(), known))
        return;
    const IslandLabels islands = labelIslands(view.triangles(), vertexCount);
    const SeamTwins twins{positions->values(), graph.borderVertices(), islands.islandOfVertex};
    PathSearch search(graph, twins.positions);
    appendLegs(known, twins, search, edges);
}

void kyUVUtils::findEdgesShortestPath(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                      kyUVTypes::UVSet uvSet, const unsigned int* picked,
                                      unsigned int count, bool alongBorders, FlatEdgeList& edges)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    if (!useCMesh(geometry)) {
        edges.clear();
        doFindShortestPath(geometry, picked, count, alongBorders, edges);
        return;
    }
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(geometry, node, uvSet);
    if (!mesh)
        return;
    const Ids known = idsBelow(sizeOf(mesh->getVertFToC()), std::span(picked, picked ? count : 0));
    Ids compact;
    mesh->mapEdgesFToC(known.data(), sizeOf(known), compact);
    FlatEdgeList path;
    doFindShortestPath(mesh->getGeomPtr(), compact.data(), sizeOf(compact), alongBorders, path);
    edges.clear();
    mesh->mapEdgesCToF(path.data(), sizeOf(path), edges);
}
