#include "Unfold3D/seams/SeamWorth.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

constexpr double weightAboveLimit = 5.0;
/// Objectives that differ by less are one.
constexpr double objectiveStep = 1e-5;

} // namespace

double priceOf(double cost, double size, const GrowthOptions& options)
{
    return options.price * cost / size;
}

std::vector<double> objectives(const SeamDraft& draft, const SeamForecast& forecast,
                               const GrowthOptions& options)
{
    const MeshParts& parts = draft.parts;
    std::vector<double> costs(parts.areas.size(), 0.0);
    for (int e = 0; e < draft.mesh.edgeCount(); ++e)
        if (draft.mayGo[static_cast<std::size_t>(e)])
            costs[static_cast<std::size_t>(parts.ofEdge(draft.mesh, e))] +=
                draft.costs[static_cast<std::size_t>(e)];
    std::vector<double> result;
    for (std::size_t part = 0; part < costs.size(); ++part) {
        const double energy = forecast.energies[part];
        const double above = std::max(0.0, energy - options.highEnergy);
        const double sum = energy + (weightAboveLimit - 1.0) * above +
                           priceOf(costs[part], parts.sizes[part], options);
        result.push_back(objectiveStep * std::round(sum / objectiveStep));
    }
    return result;
}

} // namespace unfold3d
