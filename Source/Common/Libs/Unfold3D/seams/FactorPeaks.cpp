#include "Unfold3D/seams/FactorPeaks.h"

#include "Unfold3D/base/BinaryDigits.h"
#include "Unfold3D/seams/ConformalFactor.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace unfold3d
{

namespace
{

/// Share of its height by which a hill must stand over its pass.
constexpr double leastProminence = 0.25;
/// Heights that differ by less are one, and excesses with as many binary digits in common: peaks
/// that are alike are ties whatever the rounding of positions.
constexpr double heightStep = 1e-3;
constexpr int excessDigits = 6;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Hills grow from their peaks downward and flow together at the passes (a merge tree).
class Hills
{
public:
    Hills(const VertexGraph& graph, std::vector<double> height, std::span<const double> areas)
        : graph_(graph), height_(std::move(height)), areas_(areas), hill_(height_.size(), none),
          excess_(height_.size(), 0.0)
    {}

    void findPeaks(std::vector<FactorPeak>& peaks)
    {
        std::vector<int> order;
        for (std::size_t v = 0; v < height_.size(); ++v)
            if (height_[v] > 0.0)
                order.push_back(static_cast<int>(v));
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return height_[at(a)] > height_[at(b)]; });
        for (const int v : order)
            flood(v, peaks);
        for (const int v : order)
            if (hill_[at(v)] == v)
                peaks.push_back({v, 0.0, excess_[at(v)]});
    }

private:
    static constexpr int none = -1;

    int hillOf(int v)
    {
        while (hill_[at(v)] != v)
            v = hill_[at(v)] = hill_[at(hill_[at(v)])];
        return v;
    }

    bool isHigher(int a, int b) const
    {
        return height_[at(a)] > height_[at(b)] || (height_[at(a)] == height_[at(b)] && a < b);
    }

    void flood(int v, std::vector<FactorPeak>& peaks)
    {
        hill_[at(v)] = v;
        for (const int w : graph_.of(v))
            if (hill_[at(w)] != none)
                join(hillOf(v), hillOf(w), height_[at(v)], peaks);
        excess_[at(hillOf(v))] += areas_[at(v)] * strainExcess(height_[at(v)]);
    }

    void join(int a, int b, double pass, std::vector<FactorPeak>& peaks)
    {
        if (a == b)
            return;
        const int higher = isHigher(a, b) ? a : b;
        const int lower = higher == a ? b : a;
        hill_[at(lower)] = higher;
        if (height_[at(lower)] - pass >= leastProminence * height_[at(lower)])
            peaks.push_back({lower, 0.0, excess_[at(lower)]});
        else
            excess_[at(higher)] += excess_[at(lower)];
    }

    const VertexGraph& graph_;
    std::vector<double> height_;
    std::span<const double> areas_;
    std::vector<int> hill_;      ///< [vertex] towards the peak of its hill
    std::vector<double> excess_; ///< [peak]
};

} // namespace

std::vector<FactorPeak> factorPeaks(const VertexGraph& graph, std::span<const double> strain,
                                    std::span<const double> areas)
{
    std::vector<FactorPeak> peaks;
    for (const double sign : {-1.0, 1.0}) {
        std::vector<double> height(strain.size());
        for (std::size_t v = 0; v < strain.size(); ++v)
            height[v] = heightStep * std::round(sign * strain[v] / heightStep);
        Hills(graph, std::move(height), areas).findPeaks(peaks);
    }
    for (FactorPeak& peak : peaks) {
        peak.strain = strain[at(peak.vertex)];
        peak.excess = toBinaryDigits(peak.excess, excessDigits);
    }
    std::stable_sort(peaks.begin(), peaks.end(),
                     [](const FactorPeak& a, const FactorPeak& b) { return a.excess > b.excess; });
    return peaks;
}

} // namespace unfold3d
