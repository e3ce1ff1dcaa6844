#pragma once

#include "Unfold3D/seams/SeamDraft.h"
#include "Unfold3D/seams/SeamForecast.h"

#include <vector>

namespace unfold3d
{

/// The vertices to measure limbs and pipes from: what lies on borders, the places of each part that
/// stick out far, and any vertex of a part that has neither. One forecast.
std::vector<int> limbEnds(const SeamDraft& draft, SeamForecaster& forecaster);

} // namespace unfold3d
