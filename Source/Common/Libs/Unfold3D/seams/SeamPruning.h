#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/GrowthOptions.h"
#include "Unfold3D/seams/SeamDraft.h"
#include "Unfold3D/seams/SeamForecast.h"

namespace unfold3d
{

/// Takes back grown seams that dangle, or the outer halves of such, where that costs less energy
/// than it saves price.
void pruneSeams(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
                RunControl& control);

} // namespace unfold3d
