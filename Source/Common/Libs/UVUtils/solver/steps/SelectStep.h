#pragma once

#include "UVUtils/solver/SolverRun.h"

#include <vector>

namespace kyUnfold3D
{

/// Selects what the next command works on: the listed vertices, or everything when the list is
/// empty or names as many vertices as the mesh has.
kyUVTypes::ReturnCode selectStep(SolverRun& run, const std::vector<unsigned int>& selectedVertices);

} // namespace kyUnfold3D
