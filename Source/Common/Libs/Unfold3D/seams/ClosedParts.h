#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamDraft.h"
#include "Unfold3D/seams/SeamForecast.h"

namespace unfold3d
{

/// Lays a first seam on each part that has neither border nor seam, between the two places that
/// stick out most. One forecast.
void openClosedParts(SeamDraft& draft, SeamForecaster& forecaster, const RunControl& control);

} // namespace unfold3d
