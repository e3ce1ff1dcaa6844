#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/GrowthOptions.h"
#include "Unfold3D/seams/SeamDraft.h"
#include "Unfold3D/seams/SeamForecast.h"

namespace unfold3d
{

/// Grows seams from the border of each part, and from what cuts it already, to where it would be
/// strained most when laid flat, by the cheapest ways, as long as that is worth their price. Parts
/// need to be open.
void growSeams(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
               RunControl& control);

} // namespace unfold3d
