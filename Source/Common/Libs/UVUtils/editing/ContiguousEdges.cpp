// The contiguous edges of kyUVUtils: the walk from an edge of one geometry in both directions, and
// the way of a node's ids into it and back.

#include "OpenSG/CoreAs.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/StraightestWalk.h"
#include "UVUtils/editing/VertexNormals.h"
#include "UVUtils/model/DegreesRadians.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/EdgeRuns.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/kyUVUtils.h"

#include <cmath>

namespace
{

bool isBorderEdge(const Edge& sought, std::span<const unsigned int> triangles)
{
    unsigned int sides = 0;
    visitSides(triangles, [&](const Edge& edge, unsigned int) { sides += edge == sought ? 1 : 0; });
    return sides == 1;
}

} // namespace

FlatEdgeList kyUVUtils::doFindContiguousEdges(const osg::GeometryPtr& geometry, const Edge& start,
                                              float maxSurfaceAngle, float maxEdgeAngle,
                                              bool bordersOnly, bool stopAtBorders)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const osg::GeoIndicesPtr indices = geometry->getIndices();
    if (!positions || !indices || start.second >= positions->getSize())
        return {};
    const IndexView view(indices);
    const bool isOnBorder = isBorderEdge(start, view.triangles());
    if (bordersOnly && !isOnBorder)
        return {};
    const EdgeGraph graph(view.triangles(), positions->getSize(),
                          bordersOnly ? EdgeGraph::BorderEdges : EdgeGraph::AllEdges);
    const std::vector<osg::Vec3f> normals =
        areaWeightedNormals(view.triangles(), positions->values());
    StraightestWalk walk(
        {graph, positions->values(), normals},
        {std::cos(radiansFromDegrees(maxSurfaceAngle)), std::cos(radiansFromDegrees(maxEdgeAngle))},
        stopAtBorders && !isOnBorder);
    FlatEdgeList edges{start.first, start.second};
    walk.goOn(start.first, start.second, edges);
    walk.goOn(start.second, start.first, edges);
    return edges;
}

FlatEdgeList kyUVUtils::findContiguousEdges(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                            const Edge& start, float maxSurfaceAngle,
                                            float maxEdgeAngle, bool bordersOnly,
                                            bool stopAtBorders)
{
    const auto geometry = osg::coreAs<osg::Geometry>(node);
    if (!isValidGeometry(geometry, node, false))
        return {};
    const auto find = [&](const osg::GeometryPtr& work, const Edge& edge) {
        return doFindContiguousEdges(work, edge, maxSurfaceAngle, maxEdgeAngle, bordersOnly,
                                     stopAtBorders);
    };
    if (!useCMesh(geometry))
        return find(geometry, start);
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(geometry, node, uvSet);
    if (!mesh || start.second >= mesh->getVertFToC().size())
        return {};
    const FlatEdgeList compact = find(mesh->getGeomPtr(), mesh->mapEdgeFToC(start));
    FlatEdgeList edges;
    mesh->mapEdgesCToF(compact.data(), sizeOf(compact), edges);
    return edges;
}
