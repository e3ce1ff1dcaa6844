#pragma once

#include "cli/Options.h"
#include "solver/Part.h"
#include "solver/SolverAnswer.h"

namespace uvtool
{

/// Flattens the islands of a part; one that isn't empty. On Success the part has UVs, in the scale
/// of the scene, and is without the islands that have no place in the plane; on anything else it is
/// left as it was.
SolverAnswer unfoldPart(Part& part, const UnfoldOptions& options, Console& console);

} // namespace uvtool
