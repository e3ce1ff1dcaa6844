#pragma once

#include "UVUtils/model/Edge.h"
#include "UVUtils/solver/SolverRun.h"

namespace kyUnfold3D
{

/// Has the solver hold edges straight, the horizontal ones first.
///
/// horizontal, vertical  nothing is sent for an empty list
kyUVTypes::ReturnCode constrainStep(SolverRun& run, const FlatEdgeList& horizontal,
                                    const FlatEdgeList& vertical);

} // namespace kyUnfold3D
