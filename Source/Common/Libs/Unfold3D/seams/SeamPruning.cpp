#include "Unfold3D/seams/SeamPruning.h"

#include "Unfold3D/seams/SeamBranches.h"
#include "Unfold3D/seams/SeamWorth.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The outer share of each branch that dangles, dearest first.
std::vector<std::vector<int>> danglingEnds(const SeamDraft& draft, double share)
{
    std::vector<std::vector<int>> ends;
    for (const SeamBranch& branch : findBranches(draft)) {
        if (!branch.dangles)
            continue;
        const double count = std::ceil(share * static_cast<double>(branch.edges.size()));
        ends.emplace_back(branch.edges.begin(),
                          branch.edges.begin() + static_cast<std::ptrdiff_t>(count));
    }
    const auto cost = [&](const std::vector<int>& edges) {
        return toPathCost(draft.costOf(edges));
    };
    std::stable_sort(ends.begin(), ends.end(),
                     [&](const auto& a, const auto& b) { return cost(a) > cost(b); });
    return ends;
}

/// Tries to do without each of some ends, on all parts side by side.
void tryWithout(const std::vector<std::vector<int>>& ends, const PartShares& shares,
                SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
                std::vector<double>& worth, int& spent)
{
    std::vector<std::vector<std::size_t>> endsOfPart(worth.size());
    for (std::size_t i = 0; i < ends.size(); ++i)
        endsOfPart[at(draft.parts.ofEdge(draft.mesh, ends[i].front()))].push_back(i);
    std::size_t rounds = 0;
    for (const auto& list : endsOfPart)
        rounds = std::max(rounds, list.size());
    for (std::size_t round = 0; round < rounds && spent < options.pruningForecasts;
         ++round, ++spent)
    {
        for (const auto& list : endsOfPart)
            if (round < list.size())
                draft.set(ends[list[round]], false);
        const std::vector<double> without =
            objectives(draft, forecaster.forecast(draft, shares), options);
        for (std::size_t part = 0; part < worth.size(); ++part) {
            if (round >= endsOfPart[part].size())
                continue;
            if (without[part] > worth[part])
                draft.set(ends[endsOfPart[part][round]], true);
            else
                worth[part] = without[part];
        }
    }
}

} // namespace

void pruneSeams(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
                RunControl& control)
{
    const PartShares shares = forecaster.sharesOf(draft.parts);
    std::vector<double> worth = objectives(draft, forecaster.forecast(draft, shares), options);
    int spent = 1;
    for (const double share : {1.0, 0.5, 0.25}) {
        tryWithout(danglingEnds(draft, share), shares, draft, forecaster, options, worth, spent);
        control.approach(1.0, 0.2);
    }
}

} // namespace unfold3d
