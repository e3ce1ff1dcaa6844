#pragma once

#include "UVUtils/solver/SolverRun.h"

#include <vector>

namespace kyUnfold3D
{

/// Has the solver hold edges straight, the horizontal ones first.
///
/// horizontal, vertical  two vertex ids an edge; nothing is sent for an empty list
kyUVTypes::ReturnCode constrainStep(SolverRun& run, const std::vector<unsigned int>& horizontal,
                                    const std::vector<unsigned int>& vertical);

} // namespace kyUnfold3D
