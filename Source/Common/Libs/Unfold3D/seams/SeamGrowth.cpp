#include "Unfold3D/seams/SeamGrowth.h"

#include "Unfold3D/seams/FactorPeaks.h"
#include "Unfold3D/seams/SeamWorth.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

/// A seam takes about this share of the excess around its end away.
constexpr double expectedShare = 0.7;
/// Share of the best gain from which on tips are taken together with the best.
constexpr double nearlyBest = 0.4;
/// Ways are looked for up to this many times the cost that a tip is worth: what searches count in
/// is rounded.
constexpr double searchSlack = 1.05;
/// Tips of a part to look at in a round.
constexpr int mostTips = 24;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The way from a peak to the nearest cut.
struct Tip
{
    int vertex;
    int part;
    double gain; ///< what it is expected to win, less its price
};

/// Seams that were laid on a part in one round, to be judged by the next forecast.
struct Attempt
{
    std::vector<int> tips;
    std::vector<int> edges;
};

class SeamGrower
{
public:
    SeamGrower(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
               RunControl& control)
        : draft_(draft), mesh_(draft.mesh), forecaster_(forecaster), options_(options),
          control_(control), shares_(forecaster.sharesOf(draft.parts)),
          noWalls_(draft.isSeam.size(), 0), paths_(mesh_, draft.pathCosts, noWalls_),
          isCut_(draft.cutVertices()), isBanned_(mesh_.positions.size(), 0),
          isCareful_(at(draft.parts.count()), 0)
    {}

    void run()
    {
        SeamForecast now = forecaster_.forecast(draft_, shares_);
        std::vector<double> worth = objectives(draft_, now, options_);
        for (int spent = 1; spent < options_.growthForecasts; ++spent) {
            const std::vector<Attempt> attempts = attemptAll(now);
            if (std::all_of(attempts.begin(), attempts.end(),
                            [](const Attempt& a) { return a.tips.empty(); }))
                break;
            const SeamForecast next = forecaster_.forecast(draft_, shares_);
            const std::vector<double> after = objectives(draft_, next, options_);
            std::vector<char> isBetter(worth.size(), 0);
            for (std::size_t part = 0; part < worth.size(); ++part) {
                isBetter[part] = static_cast<char>(after[part] < worth[part]);
                judge(attempts[part], part, isBetter[part] != 0);
                worth[part] = std::min(worth[part], after[part]);
            }
            adopt(next, isBetter, now);
            isCut_ = draft_.cutVertices();
            control_.approach(1.0, 0.05);
        }
    }

private:
    /// Lays seams to the best tips of each part.
    std::vector<Attempt> attemptAll(const SeamForecast& now)
    {
        const std::vector<Tip> tips = worthyTips(now);
        std::vector<double> best(at(draft_.parts.count()), 0.0);
        for (const Tip& tip : tips)
            best[at(tip.part)] = std::max(best[at(tip.part)], tip.gain);
        std::vector<Attempt> attempts(best.size());
        for (const Tip& tip : tips) {
            Attempt& attempt = attempts[at(tip.part)];
            const double least = (isCareful_[at(tip.part)] ? 1.0 : nearlyBest) * best[at(tip.part)];
            const bool isEnough = isCareful_[at(tip.part)] && !attempt.tips.empty();
            if (tip.gain < least || isEnough || isCut_[at(tip.vertex)])
                continue;
            attempt.tips.push_back(tip.vertex);
            draft_.isTip[at(tip.vertex)] = 1;
            for (const int e : wayToCut(tip.vertex)) {
                attempt.edges.push_back(e);
                lay(e);
            }
        }
        return attempts;
    }

    std::vector<Tip> worthyTips(const SeamForecast& now)
    {
        std::vector<int> seen(at(draft_.parts.count()), 0);
        std::vector<Tip> tips;
        for (const FactorPeak& peak : forecaster_.peaksOf(now.strain)) {
            const int part = draft_.parts.ofVertex[at(peak.vertex)];
            const double gain = expectedShare * peak.excess / draft_.parts.areas[at(part)];
            if (isBanned_[at(peak.vertex)] || isCut_[at(peak.vertex)] ||
                ++seen[at(part)] > mostTips)
                continue;
            const bool isUrgent = now.energies[at(part)] > options_.highEnergy;
            const double pricePerCost =
                priceOf(1.0, draft_.parts.sizes[at(part)], options_) / (isUrgent ? 5.0 : 1.0);
            const double worthyCost = gain / pricePerCost;
            const std::vector<int> way =
                wayToCut(peak.vertex, toPathCost(searchSlack * worthyCost));
            const double price = pricePerCost * draft_.costOf(way);
            if (!way.empty() && gain > price)
                tips.push_back({peak.vertex, part, gain - price});
        }
        return tips;
    }

    /// None where there is no way at a cost of at most `limit`.
    std::vector<int> wayToCut(int vertex, PathCost limit = unreached)
    {
        const int end = paths_.searchNearest(std::span(&vertex, 1), isCut_, control_, limit);
        return end < 0 ? std::vector<int>() : paths_.pathTo(end);
    }

    void lay(int edge)
    {
        draft_.set(std::span(&edge, 1), true);
        for (const int v : mesh_.verticesOf(edge))
            isCut_[at(v)] = 1;
    }

    /// Takes back what didn't pay. After that the part tries one tip at a time, and a tip that
    /// didn't pay on its own not again.
    void judge(const Attempt& attempt, std::size_t part, bool isBetter)
    {
        if (attempt.tips.empty())
            return;
        isCareful_[part] = static_cast<char>(!isBetter);
        if (isBetter)
            return;
        draft_.set(attempt.edges, false);
        for (const int tip : attempt.tips)
            draft_.isTip[at(tip)] = 0;
        if (attempt.tips.size() == 1)
            isBanned_[at(attempt.tips.front())] = 1;
    }

    void adopt(const SeamForecast& next, const std::vector<char>& isBetter, SeamForecast& now) const
    {
        for (std::size_t part = 0; part < isBetter.size(); ++part)
            if (isBetter[part])
                now.energies[part] = next.energies[part];
        for (std::size_t v = 0; v < now.strain.size(); ++v)
            if (isBetter[at(draft_.parts.ofVertex[at(forecaster_.vertexOf(static_cast<int>(v)))])])
                now.strain[v] = next.strain[v];
    }

    SeamDraft& draft_;
    const SeamMesh& mesh_;
    SeamForecaster& forecaster_;
    const GrowthOptions& options_;
    RunControl& control_;
    const PartShares shares_;
    std::vector<char> noWalls_; ///< [edge] searches end at the first cut vertex anyway
    CheapestPaths paths_;
    std::vector<char> isCut_;     ///< [vertex]
    std::vector<char> isBanned_;  ///< [vertex] a seam to it was tried and didn't pay
    std::vector<char> isCareful_; ///< [part] what was tried last didn't pay
};

} // namespace

void growSeams(SeamDraft& draft, SeamForecaster& forecaster, const GrowthOptions& options,
               RunControl& control)
{
    SeamGrower(draft, forecaster, options, control).run();
}

} // namespace unfold3d
