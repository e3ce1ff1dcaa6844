#include "UVUtils/solver/SolverFacade.h"

#include "UVUtils/model/NodeName.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"
#include "Utils/kyLog.h"

kyUVTypes::ReturnCode
onWorkGeometry(const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
               const std::function<kyUVTypes::ReturnCode(const CompactMeshScope&)>& work)
{
    if (!kyUVUtils::isValidGeometry(geometry, node, true))
        return kyUVTypes::Failure;
    const CompactMeshScope scope(geometry, node, uvSet);
    return scope.getGeometry() ? work(scope) : kyUVTypes::Failure;
}

void logFailure(const char* what, const osg::NodePtr& node)
{
    kyLog::error("%s failed for node %s.", what, nameForMessages(node));
}

kyUVTypes::ReturnCode close(const CompactMeshScope& scope, const osg::NodePtr& node,
                            const char* what, kyUVTypes::ReturnCode code)
{
    if (code == kyUVTypes::Failure)
        logFailure(what, node);
    else if (code == kyUVTypes::Success)
        scope.commit();
    return code;
}

bool hasSolverInput(const osg::Geometry& geometry)
{
    return geometry.getIndices() && osg::dcast<osg::GeoPositions3f>(geometry.getPositions());
}

std::vector<unsigned int> selectedVertices(const CompactMeshScope& scope,
                                           kyUVTypes::TempIndexList list)
{
    std::vector<unsigned int> vertices = scope.readTempIndices(list);
    // Vertices of several surfaces are one in the mesh, which makes a list longer than it looks.
    if (vertices.size() >= vertexCountOf(scope.getGeometry()))
        sortAndDropRepeats(vertices);
    return vertices;
}

HeldEdges::HeldEdges(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                     const CompactMeshScope& scope)
    : horizontal(
          scope.toWorkIds(kyUVUtils::getConstrainedEdges(geometry, node, kyUVTypes::Horizontal))),
      vertical(scope.toWorkIds(kyUVUtils::getConstrainedEdges(geometry, node, kyUVTypes::Vertical)))
{}
