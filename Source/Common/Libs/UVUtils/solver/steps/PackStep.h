#pragma once

#include "UVUtils/solver/PackCover.h"
#include "UVUtils/solver/PackSettings.h"
#include "UVUtils/solver/SolverRun.h"

#include <vector>

namespace kyUnfold3D
{

/// Packs the solver's present UVs. With a selection only the islands that it touches are packed,
/// unless it touches all of them; an empty one packs all. `cover` is filled where islands were
/// moved.
kyUVTypes::ReturnCode packStep(SolverRun& run, const std::vector<unsigned int>& selectedVertices,
                               const PackSettings& settings, PackCover& cover);

} // namespace kyUnfold3D
