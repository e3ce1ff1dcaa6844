// The islands of kyUVUtils: the search on one geometry, and the way of a node's ids into it and
// back.

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/IslandLabels.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>
#include <utility>

namespace
{

using Ids = std::vector<unsigned int>;
using VertexLists = std::vector<std::vector<unsigned int>>;

/// The islands that ids ask for, ascending, as often as they ask.
Ids islandsOf(std::span<const unsigned int> ids, const Ids& islandOfVertex)
{
    Ids islands;
    islands.reserve(ids.size());
    for (const unsigned int id : ids) {
        const unsigned int island = id < islandOfVertex.size() ? islandOfVertex[id] : noIsland;
        islands.push_back(island == noIsland ? 0 : island);
    }
    std::sort(islands.begin(), islands.end());
    return islands;
}

/// Erases the islands that are not asked for as often as they have vertices.
void keepWholeIslands(const VertexLists& islandVertices, Ids& islands)
{
    auto kept = islands.begin();
    for (auto run = islands.begin(); run != islands.end();) {
        const auto end = std::upper_bound(run, islands.end(), *run);
        if (static_cast<std::size_t>(end - run) == islandVertices[*run].size())
            *kept++ = *run;
        run = end;
    }
    islands.erase(kept, islands.end());
}

Ids wantedIslands(std::span<const unsigned int> ids, bool wholeIslandsOnly,
                  const Ids& islandOfVertex, const VertexLists& islandVertices)
{
    if (ids.empty()) {
        Ids all(islandVertices.size());
        std::iota(all.begin(), all.end(), 0U);
        return all;
    }
    // Without triangles there is no first island that a stray id could ask for.
    if (islandVertices.empty())
        return {};
    Ids islands = islandsOf(ids, islandOfVertex);
    if (wholeIslandsOnly)
        keepWholeIslands(islandVertices, islands);
    islands.erase(std::unique(islands.begin(), islands.end()), islands.end());
    return islands;
}

/// [island] Its place among the wanted ones, noIsland for the others.
Ids placesOf(const Ids& wanted, std::size_t islandCount)
{
    Ids placeOfIsland(islandCount, noIsland);
    for (unsigned int place = 0; place < wanted.size(); ++place)
        placeOfIsland[wanted[place]] = place;
    return placeOfIsland;
}

/// Appends the triangles of the wanted islands, island after island. A triangle is of the island of
/// its first vertex.
void appendTriangles(std::span<const unsigned int> triangles, const Ids& islandOfVertex,
                     const Ids& wanted, const Ids& placeOfIsland, Ids& islandTriangles,
                     Ids& islandTriangleCounts)
{
    const auto placeOf = [&](std::size_t first) {
        return placeOfIsland[islandOfVertex[triangles[first]]];
    };
    Ids counts(wanted.size(), 0);
    for (std::size_t first = 0; first < triangles.size(); first += 3)
        if (const unsigned int place = placeOf(first); place != noIsland)
            counts[place] += 3;

    std::vector<std::size_t> next;
    next.reserve(counts.size());
    std::size_t end = islandTriangles.size();
    for (const unsigned int count : counts) {
        next.push_back(end);
        end += count;
    }
    islandTriangles.resize(end);
    for (std::size_t first = 0; first < triangles.size(); first += 3)
        if (const unsigned int place = placeOf(first); place != noIsland)
            for (std::size_t corner = 0; corner < 3; ++corner)
                islandTriangles[next[place]++] = triangles[first + corner];
    islandTriangleCounts.insert(islandTriangleCounts.end(), counts.begin(), counts.end());
}

void appendVertices(const VertexLists& islandVertices, const Ids& wanted, Ids& islandVerts,
                    Ids& islandVertCounts)
{
    for (const unsigned int island : wanted) {
        const Ids& vertices = islandVertices[island];
        islandVerts.insert(islandVerts.end(), vertices.begin(), vertices.end());
        islandVertCounts.push_back(static_cast<unsigned int>(vertices.size()));
    }
}

/// The vertices of the mesh that F ids stand for, ascending, each once. All ids that the node
/// doesn't have become one that lies in no island.
Ids toCompactIds(const CompactShellMesh& mesh, std::span<const unsigned int> ids)
{
    constexpr unsigned int absent = 0xFFFFFFFFU;
    const Ids& compactOfVertex = mesh.getVertFToC();
    Ids compact;
    compact.reserve(ids.size());
    for (const unsigned int id : ids)
        compact.push_back(id < compactOfVertex.size() ? compactOfVertex[id] : absent);
    sortAndDropRepeats(compact);
    return compact;
}

/// Appends lists of compact ids, one after the other, in F ids. `translate` takes a list, its count
/// and the vector to append to; what it can't translate is left out.
template <class Translate>
void appendInFIds(const Ids& lists, const Ids& counts, Ids& listsF, Ids& countsF,
                  const Translate& translate)
{
    listsF.reserve(listsF.size() + lists.size());
    const unsigned int* next = lists.data();
    for (const unsigned int count : counts) {
        const std::size_t before = listsF.size();
        translate(next, count, listsF);
        countsF.push_back(static_cast<unsigned int>(listsF.size() - before));
        next += count;
    }
}

} // namespace

void kyUVUtils::doFindUVIslands(const osg::GeoIndicesPtr& indices, unsigned int vertexCount,
                                std::vector<unsigned int>& vertexIslands,
                                std::vector<std::vector<unsigned int>>& islandVertices)
{
    IslandLabels labels = labelIslands(IndexView(indices).ids(), vertexCount);
    islandVertices = verticesOfIslands(labels);
    vertexIslands = std::move(labels.islandOfVertex);
}

void kyUVUtils::doFindUVIslands(const osg::GeometryPtr& geometry, const unsigned int* ids,
                                unsigned int count, bool wholeIslandsOnly,
                                std::vector<unsigned int>& islandTriangles,
                                std::vector<unsigned int>& islandTriangleCounts,
                                std::vector<unsigned int>& islandVerts,
                                std::vector<unsigned int>& islandVertCounts)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const osg::GeoIndicesPtr indices = geometry->getIndices();
    if (!positions || !indices)
        return;
    Ids vertexIslands;
    VertexLists islandVertices;
    doFindUVIslands(indices, positions->getSize(), vertexIslands, islandVertices);
    const std::span<const unsigned int> asked(ids, ids ? count : 0);
    const Ids wanted = wantedIslands(asked, wholeIslandsOnly, vertexIslands, islandVertices);
    const IndexView triangles(indices);
    appendTriangles(triangles.triangles(), vertexIslands, wanted,
                    placesOf(wanted, islandVertices.size()), islandTriangles, islandTriangleCounts);
    appendVertices(islandVertices, wanted, islandVerts, islandVertCounts);
}

void kyUVUtils::findUVIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                              bool wholeIslandsOnly, std::vector<unsigned int>& islandTriangles,
                              std::vector<unsigned int>& islandTriangleCounts,
                              std::vector<unsigned int>& islandVerts,
                              std::vector<unsigned int>& islandVertCounts)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    if (!useCMesh(geometry)) {
        doFindUVIslands(geometry, ids, count, wholeIslandsOnly, islandTriangles,
                        islandTriangleCounts, islandVerts, islandVertCounts);
        return;
    }
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(geometry, node, uvSet);
    if (!mesh)
        return;
    const Ids compact = toCompactIds(*mesh, std::span(ids, ids ? count : 0));
    Ids triangles;
    Ids triangleCounts;
    Ids vertices;
    Ids vertexCounts;
    doFindUVIslands(mesh->getGeomPtr(), compact.empty() ? nullptr : compact.data(),
                    static_cast<unsigned int>(compact.size()), wholeIslandsOnly, triangles,
                    triangleCounts, vertices, vertexCounts);
    appendInFIds(triangles, triangleCounts, islandTriangles, islandTriangleCounts,
                 [mesh](const unsigned int* list, unsigned int size, Ids& out) {
                     mesh->mapSMeshCToF(list, size, out);
                 });
    appendInFIds(vertices, vertexCounts, islandVerts, islandVertCounts,
                 [mesh](const unsigned int* list, unsigned int size, Ids& out) {
                     mesh->mapVertsCToF(list, size, out, false);
                 });
}
