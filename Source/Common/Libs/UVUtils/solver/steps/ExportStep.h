#pragma once

#include "UVUtils/solver/SolverRun.h"

#include <vector>

namespace kyUnfold3D
{

/// Reads the solver's UVs back: on `Success` `uvs` holds one entry for each vertex of the mesh,
/// else it stays as it was.
kyUVTypes::ReturnCode exportStep(SolverRun& run, std::vector<osg::Vector<float, 2>>& uvs);

} // namespace kyUnfold3D
