#include "UVUtils/solver/kyUnfold3D.h"

#include "UVUtils/solver/SolverRun.h"
#include "UVUtils/solver/steps/ImportStep.h"

namespace kyUnfold3D
{

namespace
{

void addMode(SolverTable& table, const SeamSettings& settings)
{
    switch (settings.getMode()) {
    case kyUVTypes::Organic:
        table.addName("#Organic table")
            .add("#Organic.UsePipesCutter bool", settings.getOrganicUsePipesCutter())
            .add("#Organic.SegAmount double", settings.getOrganicSegAmount());
        break;
    case kyUVTypes::Manufactured:
        table.addName("#Manufactured table")
            .add("#Manufactured.Angle double", settings.getManufacturedAngle())
            .add("#Manufactured.MinPatchRatio double", settings.getManufacturedAreaRatio());
        break;
    case kyUVTypes::Baking:
        table.addName("#Baking table")
            .add("#Baking.Angle double", settings.getBakingAngle())
            .add("#Baking.MinPatchNumPoly int", settings.getBakingSizeOfMinPatch());
        break;
    default: // any number may be set; the solver chooses then
        break;
    }
}

/// The seams are a selection of edges that the solver makes, so they come as the answer to the
/// command that selects.
kyUVTypes::ReturnCode selectSeams(SolverRun& run, const SeamSettings& settings, FlatEdgeList& edges)
{
    SolverTable table;
    table.add(R"(#PrimType string "Edge")", "Edge")
        .add("#Select bool", true)
        .add("#ResetBefore bool", true)
        .enable("#ReturnEdgesSel bool");
    addMode(table, settings);
    const auto answer = run.perform("Select", table);
    if (answer.code == kyUVTypes::Success)
        edges = run.mesh().getEdgesVertIds(answer.result->GetInts("#EdgeSelection Ints"));
    return answer.code;
}

} // namespace

kyUVTypes::ReturnCode seam(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                           const SeamSettings& settings, FlatEdgeList& edges)
{
    return runSolver({"unfold3dSeam", "Seam"}, {geometry, uvSet, GeometryTexCoords, {}},
                     [&](SolverRun& run) {
                         return runInOrder({
                             [&] { return importStep(run); },
                             [&] { return selectSeams(run, settings, edges); },
                         });
                     });
}

} // namespace kyUnfold3D
