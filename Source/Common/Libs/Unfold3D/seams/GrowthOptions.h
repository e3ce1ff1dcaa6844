#pragma once

namespace unfold3d
{

struct GrowthOptions
{
    /// What a seam that costs as much as the size of its part has to win, in energy (mean over
    /// the area of the part; 4 is isometric).
    double price = 0.1;
    /// Above this energy a part is distorted so much that a seam is worth five times its price.
    double highEnergy = 4.4;
    /// Forecasts to spend on growing, and on pruning.
    int growthForecasts = 30;
    int pruningForecasts = 15;
};

} // namespace unfold3d
