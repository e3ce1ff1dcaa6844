#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamDraft.h"
#include "Unfold3D/seams/SeamForecast.h"

namespace unfold3d
{

struct GrowthOptions
{
    /// What a seam that costs as much as the diagonal of its part has to win, in energy (mean over
    /// the area of the part; 4 is isometric).
    double price = 0.1;
    /// Above this energy a part is distorted so much that a seam is worth five times its price.
    double highEnergy = 4.4;
    /// Forecasts to spend, on growing and on pruning each.
    int forecasts = 30;
};

/// Lays a first seam on each part that has neither border nor seam, between the two places that
/// stick out most. One forecast.
void openClosedParts(SeamDraft& draft, SeamForecaster& forecaster, const RunControl& control);

/// Grows seams from the border of each part, and from what cuts it already, to where it would be
/// strained most when laid flat, by the cheapest ways, as long as that is worth their price. Parts
/// need to be open.
void growSeams(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
               RunControl& control);

/// Takes back grown seams that dangle, or the outer halves of such, where that costs less energy
/// than it saves price.
void pruneSeams(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
                RunControl& control);

} // namespace unfold3d
