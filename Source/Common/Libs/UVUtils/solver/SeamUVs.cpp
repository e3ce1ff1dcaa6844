#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/solver/SolverFacade.h"
#include "UVUtils/solver/kyUnfold3D.h"

kyUVTypes::ReturnCode kyUVUtils::seamUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                                 const kyUnfold3D::SeamSettings& settings,
                                                 FlatEdgeList& edges)
{
    return onWorkGeometry(geometry, node, uvSet, [&](const CompactMeshScope& scope) {
        const kyUVTypes::ReturnCode code =
            kyUnfold3D::seam(scope.getGeometry(), uvSet, settings, edges);
        scope.toCallerIds(edges);
        if (code == kyUVTypes::Failure)
            logFailure("Seaming UVs", node);
        return code; // no UVs were written, so there is nothing to commit
    });
}
