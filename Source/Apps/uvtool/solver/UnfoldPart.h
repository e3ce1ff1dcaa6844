#pragma once

#include "check/Lines.h"
#include "cli/Options.h"
#include "solver/Part.h"
#include "solver/SolverAnswer.h"

namespace uvtool
{

/// Flattens the islands of a part; one that isn't empty. On Success the part has UVs, in the scale
/// of the scene, and is without the islands that have no place in the plane; on anything else it is
/// left as it was.
///
/// held  sides of its mesh that are to lie along an axis
SolverAnswer unfoldPart(Part& part, const UnfoldOptions& options, const HeldSides& held,
                        Console& console);

} // namespace uvtool
