#pragma once

#include "UVUtils/solver/SolverRun.h"

namespace kyUnfold3D
{

/// Hands the mesh of the run to the solver.
kyUVTypes::ReturnCode importStep(SolverRun& run);

} // namespace kyUnfold3D
