#pragma once

#include "UVUtils/solver/SolverRun.h"

namespace kyUnfold3D
{

/// Opens the solver's work; the first command of every run.
kyUVTypes::ReturnCode initStep(SolverRun& run);

} // namespace kyUnfold3D
