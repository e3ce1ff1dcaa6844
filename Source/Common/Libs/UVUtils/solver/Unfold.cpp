#include "UVUtils/solver/kyUnfold3D.h"

#include "UVUtils/solver/SolverRun.h"
#include "UVUtils/solver/WriteLine.h"
#include "UVUtils/solver/steps/ConstrainStep.h"
#include "UVUtils/solver/steps/ExportStep.h"
#include "UVUtils/solver/steps/ImportStep.h"
#include "UVUtils/solver/steps/PackStep.h"
#include "UVUtils/solver/steps/SelectStep.h"

namespace kyUnfold3D
{

namespace
{

kyUVTypes::ReturnCode unfoldStep(SolverRun& run, const UnfoldSettings& settings)
{
    writeLine("Unfolding...");
    const SolverProgressScope scope(Unfolding, &run.state());
    const auto answer = run.perform(
        "Unfold", SolverTable()
                      .add("#PrimType string Island", "Vertex")
                      .add("#ProcessSelection bool", true)
                      .addName("#ProcessAllIfNoneSelected bool")
                      .add("#Iterations int 1", settings.getOptimizeIterations())
                      .add("#BorderIntersections bool", settings.getPreventBorderIntersections())
                      .add("#TriangleFlips bool", settings.getPreventTriangleFlips())
                      .add("#RoomSpace double 000.1", settings.getRoomSpace()));
    if (answer.code == kyUVTypes::Success)
        writeLine("Unfold done.");
    return answer.code;
}

} // namespace

kyUVTypes::ReturnCode unfold(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                             std::vector<osg::Vector<float, 2>>& uvs, UVWInputMode inputMode,
                             const UnfoldSettings& settings, const PackSettings* packSettings,
                             const FlatEdgeList& horizontalEdges, const FlatEdgeList& verticalEdges,
                             const std::vector<unsigned int>& selectedVertices)
{
    const auto unfoldTheMesh = [&](SolverRun& run) {
        run.beginShare(packSettings ? 0.7 : 0.8);
        return unfoldStep(run, settings);
    };
    const auto packIfAsked = [&](SolverRun& run) {
        if (!packSettings)
            return kyUVTypes::Success;
        run.beginShare(0.1);
        PackCover cover;
        return packStep(run, selectedVertices, *packSettings, cover);
    };
    return runSolver({"unfold3dUnfold", "Unfold"}, {geometry, uvSet, inputMode, uvs},
                     [&](SolverRun& run) {
                         run.beginShare(0.2);
                         return runInOrder({
                             [&] { return importStep(run); },
                             [&] { return constrainStep(run, horizontalEdges, verticalEdges); },
                             [&] { return selectStep(run, selectedVertices); },
                             [&] { return unfoldTheMesh(run); },
                             [&] { return packIfAsked(run); },
                             [&] { return exportStep(run, uvs); },
                         });
                     });
}

kyUVTypes::ReturnCode unfold(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                             std::vector<osg::Vector<float, 2>>& uvs, UVWInputMode inputMode,
                             const UnfoldSettings& settings, const PackSettings* packSettings,
                             const FlatEdgeList& horizontalEdges, const FlatEdgeList& verticalEdges)
{
    return unfold(geometry, uvSet, uvs, inputMode, settings, packSettings, horizontalEdges,
                  verticalEdges, {});
}

} // namespace kyUnfold3D
