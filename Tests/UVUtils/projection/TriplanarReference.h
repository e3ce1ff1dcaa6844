#pragma once

#include "OpenSG/TinyGeometry.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <map>
#include <queue>
#include <set>

/// What becomes of triangles that may take several axes, worked out without any speed. Axes are
/// masks, 0 for none; a triangle with one candidate takes it.
class PropagationReference
{
public:
    using Masks = std::vector<unsigned char>;

    /// places  [3 * triangle + corner] equal for corners at the same place
    PropagationReference(const tiny::Ids& places, const Masks& candidates)
        : candidates_(candidates), neighbors_(candidates.size())
    {
        for (const unsigned char mask : candidates)
            axes.push_back(std::has_single_bit(mask) ? mask : 0);
        findNeighbors(places);
        for (const int axis : {0, 3, 1, 4, 2, 5})
            for (std::size_t t = 0; t < axes.size(); ++t)
                if (axes[t] == 1 << axis && hasOpenNeighbor(t))
                    queue_.push(t);
        spread();
        for (const bool isTurnOfMany : {false, true})
            for (std::size_t t = 0; t < axes.size(); ++t)
                if (const int count = std::popcount(candidates[t]);
                    axes[t] == 0 && count > 1 && (count > 2) == isTurnOfMany)
                    choose(t);
    }

    Masks axes; ///< [triangle] the result

private:
    void findNeighbors(const tiny::Ids& places)
    {
        std::map<std::set<unsigned>, std::vector<std::size_t>> trianglesOf;
        const auto edgeFrom = [&](std::size_t i) {
            return std::set{places[i], places[i % 3 == 2 ? i - 2 : i + 1]};
        };
        for (std::size_t i = 0; i < places.size(); ++i)
            trianglesOf[edgeFrom(i)].push_back(i / 3);
        for (std::size_t i = 0; i < places.size(); ++i)
            if (const auto& there = trianglesOf[edgeFrom(i)]; there.size() < 3)
                std::copy_if(there.begin(), there.end(), std::back_inserter(neighbors_[i / 3]),
                             [i](std::size_t other) { return other != i / 3; });
    }

    bool hasOpenNeighbor(std::size_t t) const
    {
        return std::any_of(neighbors_[t].begin(), neighbors_[t].end(),
                           [this](std::size_t x) { return axes[x] == 0; });
    }

    void spread()
    {
        for (; !queue_.empty(); queue_.pop())
            for (const std::size_t x : neighbors_[queue_.front()])
                if (axes[x] == 0 && (candidates_[x] & axes[queue_.front()]) != 0) {
                    axes[x] = axes[queue_.front()];
                    queue_.push(x);
                }
    }

    void choose(std::size_t t)
    {
        const bool starts = hasOpenNeighbor(t);
        const auto lowest = static_cast<unsigned char>(candidates_[t] & -candidates_[t]);
        axes[t] = starts || neighbors_[t].empty() ? lowest : axes[neighbors_[t].back()];
        if (starts)
            queue_.push(t);
        spread();
    }

    const Masks& candidates_;
    std::vector<std::vector<std::size_t>> neighbors_;
    std::queue<std::size_t> queue_;
};
