#include "UVUtils/solver/steps/ImportStep.h"

#include "UVUtils/solver/WriteLine.h"

namespace kyUnfold3D
{

kyUVTypes::ReturnCode importStep(SolverRun& run)
{
    writeLine("Importing...");
    const SolverProgressScope scope(Importing, &run.state());
    const kyUnfold3DData& mesh = run.mesh();
    return run
        .perform("Import", SolverTable()
                               .add("#Data.PolySizes ints", mesh.getPolySizes())
                               .add("#Data.PolyXYZIDs ints", mesh.getPoly3DIDs())
                               .add("#Data.CoordsXYZ doubles", mesh.getCoordsXYZ())
                               .add("#Data.PolyUVWIDs ints", mesh.getPolyUVWIDs())
                               .add("#Data.CoordsUVW doubles", mesh.getCoordsUVW()))
        .code;
}

} // namespace kyUnfold3D
