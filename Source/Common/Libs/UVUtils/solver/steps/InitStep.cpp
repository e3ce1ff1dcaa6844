#include "UVUtils/solver/steps/InitStep.h"

#include "UVUtils/solver/WriteLine.h"

namespace kyUnfold3D
{

kyUVTypes::ReturnCode initStep(SolverRun& run)
{
    writeLine("Unfold3D SDK version: ", NU3D::CUnfold3DAPI::APIVersionString());
    return run.perform("Init", SolverTable().add("#UndoHistorySize int", 0)).code;
}

} // namespace kyUnfold3D
