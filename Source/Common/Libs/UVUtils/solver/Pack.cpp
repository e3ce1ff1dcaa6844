#include "UVUtils/solver/kyUnfold3D.h"

#include "UVUtils/solver/SolverRun.h"
#include "UVUtils/solver/steps/ExportStep.h"
#include "UVUtils/solver/steps/ImportStep.h"
#include "UVUtils/solver/steps/PackStep.h"

namespace kyUnfold3D
{

kyUVTypes::ReturnCode pack(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           std::vector<osg::Vector<float, 2>>& uvs, const PackSettings& settings,
                           const std::vector<unsigned int>& selectedVertices, PackCover& cover)
{
    const auto packTheMesh = [&](SolverRun& run) {
        run.beginShare(0.5);
        return packStep(run, selectedVertices, settings, cover);
    };
    return runSolver({"unfold3dPack", "Packing"}, {geometry, uvSet, GeometryTexCoords, uvs},
                     [&](SolverRun& run) {
                         run.beginShare(0.5);
                         return runInOrder({
                             [&] { return importStep(run); },
                             [&] { return packTheMesh(run); },
                             [&] { return exportStep(run, uvs); },
                         });
                     });
}

kyUVTypes::ReturnCode pack(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           std::vector<osg::Vector<float, 2>>& uvs, const PackSettings& settings,
                           const std::vector<unsigned int>& selectedVertices)
{
    PackCover cover;
    return pack(geometry, uvSet, uvs, settings, selectedVertices, cover);
}

kyUVTypes::ReturnCode pack(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           std::vector<osg::Vector<float, 2>>& uvs, const PackSettings& settings)
{
    return pack(geometry, uvSet, uvs, settings, {});
}

} // namespace kyUnfold3D
