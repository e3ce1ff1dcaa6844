#include "UVUtils/solver/kyUnfold3D.h"

#include "UVUtils/solver/SolverRun.h"
#include "UVUtils/solver/WriteLine.h"
#include "UVUtils/solver/steps/ConstrainStep.h"
#include "UVUtils/solver/steps/ExportStep.h"
#include "UVUtils/solver/steps/ImportStep.h"
#include "UVUtils/solver/steps/SelectStep.h"

namespace kyUnfold3D
{

namespace
{

kyUVTypes::ReturnCode optimizeStep(SolverRun& run, const OptimizeSettings& settings)
{
    writeLine("Optimizing...");
    const SolverProgressScope scope(Optimizing, &run.state());
    return run
        .perform(
            "Optimize",
            SolverTable()
                .add("#PrimType string Island", "Vertex")
                .add("#ProcessSelection bool", true)
                .addName("#ProcessAllIfNoneSelected bool")
                .add("#Iterations int 2", settings.getIterations())
                .add("#BorderIntersection bool", settings.getPreventBorderIntersections())
                .add("#TriangleFlips bool", settings.getPreventTriangleFlips())
                .add("#RoomSpace double 0.001", settings.getRoomSpace())
                .add("#Mix double 1.0", settings.getPower())
                .add("#AngleDistanceMix double 1.0", settings.getAngleVsDistanceConservation()))
        .code;
}

} // namespace

kyUVTypes::ReturnCode optimize(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                               std::vector<osg::Vector<float, 2>>& uvs,
                               const OptimizeSettings& settings,
                               const FlatEdgeList& horizontalEdges,
                               const FlatEdgeList& verticalEdges,
                               const std::vector<unsigned int>& selectedVertices)
{
    const auto optimizeTheMesh = [&](SolverRun& run) {
        run.beginShare(0.8);
        return optimizeStep(run, settings);
    };
    return runSolver({"unfold3dOptimize", "Optimize"}, {geometry, uvSet, GeometryTexCoords, uvs},
                     [&](SolverRun& run) {
                         run.beginShare(0.2);
                         return runInOrder({
                             [&] { return importStep(run); },
                             [&] { return constrainStep(run, horizontalEdges, verticalEdges); },
                             [&] { return selectStep(run, selectedVertices); },
                             [&] { return optimizeTheMesh(run); },
                             [&] { return exportStep(run, uvs); },
                         });
                     });
}

kyUVTypes::ReturnCode optimize(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                               std::vector<osg::Vector<float, 2>>& uvs,
                               const OptimizeSettings& settings,
                               const FlatEdgeList& horizontalEdges,
                               const FlatEdgeList& verticalEdges)
{
    return optimize(geometry, uvSet, uvs, settings, horizontalEdges, verticalEdges, {});
}

} // namespace kyUnfold3D
