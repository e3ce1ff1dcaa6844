// The sew of kyUVUtils along edges of a node: on a plain geometry as it stands, or on the compact
// mesh and on each of its surfaces alike.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <optional>
#include <ranges>

namespace
{

using Pairs = std::span<const unsigned int>; // two ids an edge

unsigned int sizeOf(const FlatEdgeList& pairs)
{
    return static_cast<unsigned int>(pairs.size());
}

FlatEdgeList copyOfList(const osg::GeometryPtr& geometry, kyUVTypes::TempIndexList number)
{
    const osg::GeoTmpIndexEditInterface list(geometry, number);
    return {list.values().begin(), list.values().end()};
}

/// Is an edge in a list of ordered pairs, ascending by first, then second id?
bool containsEdge(Pairs sorted, const Edge& edge)
{
    const auto edgeAt = [&](std::size_t i) { return Edge(sorted[2 * i], sorted[2 * i + 1]); };
    const auto places = std::views::iota(std::size_t{0}, sorted.size() / 2);
    const auto found = std::ranges::lower_bound(places, edge, {}, edgeAt);
    return found != places.end() && edgeAt(*found) == edge;
}

/// The pairs whose edges pass a test.
template <class IsKept>
FlatEdgeList pairsWhere(Pairs pairs, const IsKept& isKept)
{
    FlatEdgeList kept;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        if (isKept(Edge(pairs[i], pairs[i + 1])))
            kept.insert(kept.end(), {pairs[i], pairs[i + 1]});
    return kept;
}

/// The pairs between two vertices of one surface.
FlatEdgeList pairsOnSurfaces(Pairs pairs, const std::vector<ActiveSurface>& surfaces)
{
    return pairsWhere(pairs, [&](const Edge& edge) {
        const auto next = std::ranges::upper_bound(surfaces, edge.first, {}, &ActiveSurface::firstId);
        if (next == surfaces.begin())
            return false;
        const ActiveSurface& surface = *std::prev(next);
        return edge.second - surface.firstId < surface.vertexCount;
    });
}

/// Those edges of a sorted list whose lower id is on a surface, in ids of that surface.
FlatEdgeList localEdges(const std::vector<Edge>& sorted, unsigned int firstId,
                        unsigned int vertexCount)
{
    const auto begin = std::ranges::lower_bound(sorted, firstId, {}, &Edge::first);
    FlatEdgeList local;
    for (auto edge = begin; edge != sorted.end() && edge->first - firstId < vertexCount; ++edge)
        local.insert(local.end(), {edge->first - firstId, edge->second - firstId});
    return local;
}

} // namespace
