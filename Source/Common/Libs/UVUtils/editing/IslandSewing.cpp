// The sews of kyUVUtils that choose their edges themselves: border edges of some islands, or of the
// whole geometry, that lie exactly on another one.

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/WeldKey.h"
#include "UVUtils/editing/IslandLabels.h"
#include "UVUtils/model/BorderEdges.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/PositionOrder.h"
#include "UVUtils/model/kyUVUtils.h"

#include <set>

namespace
{

/// The first edge that was met in a place.
struct BorderPlace
{
    Edge edge;
    mutable unsigned int hits = 0; ///< how many others there are; no part of the order
};

/// Edges in one place are those of which neither comes before the other: both ends must be equal to
/// the last bit.
///
/// Near ends are compared with tolerance, but in one of the two directions only, so that this is no
/// strict weak order there.
class BorderEdgeLess
{
public:
    explicit BorderEdgeLess(std::span<const osg::Pnt3f> positions) : positions_(positions) {}

    bool operator()(const BorderPlace& a, const BorderPlace& b) const
    {
        const auto [lowOfA, highOfA] = endsOf(a.edge);
        const auto [lowOfB, highOfB] = endsOf(b.edge);
        return isBefore(lowOfA, lowOfB) || (isNear(lowOfA, lowOfB) && isBefore(highOfA, highOfB));
    }

private:
    /// The lower one first.
    std::pair<osg::Pnt3f, osg::Pnt3f> endsOf(const Edge& edge) const
    {
        const osg::Pnt3f& first = positions_[edge.first];
        const osg::Pnt3f& second = positions_[edge.second];
        return isBefore(second, first) ? std::pair(second, first) : std::pair(first, second);
    }

    std::span<const osg::Pnt3f> positions_;
};

} // namespace

void kyUVUtils::doFindCommonBorders(const osg::GeometryPtr& geometry, const unsigned int* edges,
                                    unsigned int count, bool otherIslandOnly, FlatEdgeList& out)
{
    const auto property = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    if (!property || property->getSize() == 0 || count == 0)
        return;
    const std::span<const osg::Pnt3f> positions = std::as_const(*property).values();
    std::vector<unsigned int> islandOf; // [vertex]
    if (otherIslandOnly)
        islandOf = labelIslands(IndexView(geometry->getIndices()).triangles(), property->getSize())
                       .islandOfVertex;

    std::set<BorderPlace, BorderEdgeLess> places{BorderEdgeLess(positions)};
    for (unsigned int i = 0; i + 1 < count; i += 2) {
        const BorderPlace edge{Edge(edges[i], edges[i + 1])};
        if (edge.edge.second >= positions.size())
            continue; // the list is older than the geometry
        const auto found = places.find(edge);
        if (found == places.end())
            places.insert(edge);
        else if ((!otherIslandOnly || islandOf[found->edge.first] != islandOf[edges[i]]) &&
                 found->hits++ == 0)
            out.insert(out.end(), {edges[i], edges[i + 1]});
    }
}

void kyUVUtils::sewCommonBorders(
    const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
    const std::function<FlatEdgeList(const CompactMeshScope&)>& bordersOf, bool otherIslandOnly,
    bool matchUVs, kyTopologyBridge* bridge)
{
    FlatEdgeList borders;
    FlatEdgeList common;
    {
        const CompactMeshScope scope(geometry, node, uvSet);
        if (useCMesh(geometry) && !scope.getMesh())
            return;
        borders = bordersOf(scope);
        doFindCommonBorders(scope.getGeometry(), borders.data(), sizeOf(borders), otherIslandOnly,
                            common);
        if (common.empty())
            return;
        scope.toCallerIds(borders);
        scope.toCallerIds(common);
    } // the sew makes a scope of its own
    sewAlongEdges(geometry, node, uvSet, borders.data(), sizeOf(borders), common.data(),
                  sizeOf(common), matchUVs, bridge);
}

void kyUVUtils::sewSelectedIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                   kyUVTypes::UVSet uvSet, bool otherIslandOnly, bool matchUVs,
                                   kyTopologyBridge* bridge)
{
    const osg::GeoTmpIndexEditInterface triangles(geometry, kyUVTypes::IslandTriangles);
    if (!isValidGeometry(geometry, node, false) || triangles.getSize() == 0)
        return;
    const auto bordersOf = [](const CompactMeshScope& scope) {
        return borderEdges(
            std::span<const unsigned int>(scope.readTempIndices(kyUVTypes::IslandTriangles)));
    };
    sewCommonBorders(geometry, node, uvSet, bordersOf, otherIslandOnly, matchUVs, bridge);
}

void kyUVUtils::sewAllIslands(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet uvSet, bool otherIslandOnly, bool matchUVs,
                              kyTopologyBridge* bridge)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    const auto bordersOf = [](const CompactMeshScope& scope) {
        return borderEdges(scope.getGeometry()->getIndices());
    };
    sewCommonBorders(geometry, node, uvSet, bordersOf, otherIslandOnly, matchUVs, bridge);
}
