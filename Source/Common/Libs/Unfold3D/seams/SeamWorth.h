#pragma once

#include "Unfold3D/seams/GrowthOptions.h"
#include "Unfold3D/seams/SeamDraft.h"
#include "Unfold3D/seams/SeamForecast.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// What growing and pruning weigh against each other.

/// Price of seams of a part, in energy.
double priceOf(double cost, double size, const GrowthOptions& options);

/// [part] the energy, with what is above the limit counted more, and the price of its seams. The
/// lower the better.
std::vector<double> objectives(const SeamDraft& draft, const SeamForecast& forecast,
                               const GrowthOptions& options);

} // namespace unfold3d
