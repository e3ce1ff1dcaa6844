// Operations of kyUVUtils that have the solver change present UVs: packing and optimising.

#include "UVUtils/model/NodeName.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/solver/SolverFacade.h"
#include "UVUtils/solver/kyUnfold3D.h"
#include "Utils/kyLog.h"

namespace
{

bool isBetween(kyUVUtils::ESelectMode mode, kyUVUtils::ESelectMode first,
               kyUVUtils::ESelectMode last)
{
    return mode >= first && mode <= last;
}

kyUVTypes::TempIndexList listOfMode(kyUVUtils::ESelectMode mode)
{
    return mode == kyUVUtils::SelectIslands ? kyUVTypes::IslandVertices : kyUVTypes::FreeVertices;
}

} // namespace

kyUVTypes::ReturnCode kyUVUtils::packUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                                 const kyUnfold3D::PackSettings& settings,
                                                 ESelectMode selectMode)
{
    if (!isBetween(selectMode, SelectAll, SelectIslands)) {
        kyLog::infoNR("PackUVs unsupported select mode %i", selectMode);
        return kyUVTypes::Failure;
    }
    const auto pack = [&](const CompactMeshScope& scope, UVArray& uvs,
                          const std::vector<unsigned int>& selected) {
        return kyUnfold3D::pack(scope.getGeometry(), uvSet, uvs, settings, selected);
    };
    return editUVsUnfold3D(geometry, node, uvSet, selectMode, {"pack", "Packing UVs", pack});
}

kyUVTypes::ReturnCode kyUVUtils::optimizeUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                     const osg::NodePtr& node,
                                                     kyUVTypes::UVSet uvSet,
                                                     const kyUnfold3D::OptimizeSettings& settings,
                                                     ESelectMode selectMode)
{
    if (!isBetween(selectMode, SelectAll, SelectVertices)) {
        kyLog::infoNR("OptimizeUVs unsupported select mode %i", selectMode);
        return kyUVTypes::Failure;
    }
    const auto optimize = [&](const CompactMeshScope& scope, UVArray& uvs,
                              const std::vector<unsigned int>& selected) {
        const HeldEdges held(geometry, node, scope);
        return kyUnfold3D::optimize(scope.getGeometry(), uvSet, uvs, settings, held.horizontal,
                                    held.vertical, selected);
    };
    return editUVsUnfold3D(geometry, node, uvSet, selectMode,
                           {"optimize", "Optimizing UVs", optimize});
}

kyUVTypes::ReturnCode kyUVUtils::editUVsUnfold3D(const osg::GeometryPtr& geometry,
                                                 const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                                 ESelectMode selectMode, const SolverEdit& edit)
{
    return onWorkGeometry(geometry, node, uvSet, [&](const CompactMeshScope& scope) {
        const osg::GeometryPtr& work = scope.getGeometry();
        const osg::GeoTexCoords2fPtr slot = uvSlot(work, uvSet);
        if (!hasSolverInput(*work) || !slot || !scope.hasSlot())
            return kyUVTypes::Failure;
        if (vertexCountOf(work) != slot->getSize()) {
            kyLog::error("Cannot %s UVs for node %s, because not all vertices have UVs.", edit.verb,
                         nameForMessages(node));
            return kyUVTypes::Failure;
        }
        const bool isForAll = selectMode == SelectAll;
        const std::vector<unsigned int> selected =
            isForAll ? std::vector<unsigned int>()
                     : selectedVertices(scope, listOfMode(selectMode));
        if (!isForAll && selected.empty())
            return kyUVTypes::Failure;
        UVArray uvs;
        kyUVTypes::ReturnCode code = edit.run(scope, uvs, selected);
        if (code == kyUVTypes::Success)
            code = unlessAssigned(isForAll ? assignTexCoords(work, uvSet, uvs)
                                           : assignTexCoords(work, uvSet, uvs, selected));
        return close(scope, node, edit.what, code);
    });
}
