#pragma once

#include "cli/Options.h"
#include "solver/Part.h"
#include "solver/SolverAnswer.h"

#include "UVUtils/solver/PackCover.h"

#include <span>

namespace uvtool
{

/// Packs the islands of some parts together: each keeps its shape and gets a new place. On anything
/// but Success the parts are left as they were. `cover` tells how well it went.
SolverAnswer packParts(std::span<Part* const> parts, const PackOptions& options, Console& console,
                       kyUnfold3D::PackCover& cover);

/// Side of a texel, in UV units.
double texelSize(const PackOptions& options);

/// The box that is packed into, or one for each tile.
std::vector<UVBox> boxesOf(const kyUnfold3D::PackSettings& settings);

} // namespace uvtool
