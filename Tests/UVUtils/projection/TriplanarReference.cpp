#include "UVUtils/projection/TriplanarReference.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <map>
#include <queue>

using osg::Vec3f;
using tiny::Ids;

namespace reference
{

namespace
{

class Propagation
{
public:
    Propagation(const Ids& places, const Masks& candidates)
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
        chooseWhere([](int count) { return count == 2; });
        chooseWhere([](int count) { return count >= 3; });
    }

    Masks axes;

private:
    void findNeighbors(const Ids& places)
    {
        const auto edgeOf = [&](std::size_t t, std::size_t k) {
            return std::minmax(
                {unsigned{places[3 * t + k]}, unsigned{places[3 * t + (k + 1) % 3]}});
        };
        std::map<std::pair<unsigned, unsigned>, std::vector<std::size_t>> trianglesOf;
        for (std::size_t t = 0; t < axes.size(); ++t)
            for (const std::size_t k : {0U, 1U, 2U})
                trianglesOf[edgeOf(t, k)].push_back(t);
        for (std::size_t t = 0; t < axes.size(); ++t)
            for (const std::size_t k : {0U, 1U, 2U})
                if (const auto& there = trianglesOf[edgeOf(t, k)]; there.size() < 3)
                    for (const std::size_t other : there)
                        if (other != t)
                            neighbors_[t].push_back(other);
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

    void chooseWhere(const std::function<bool(int)>& accepts)
    {
        for (std::size_t t = 0; t < axes.size(); ++t) {
            if (axes[t] != 0 || !accepts(std::popcount(candidates_[t])))
                continue;
            const bool starts = hasOpenNeighbor(t);
            const auto lowest = static_cast<unsigned char>(candidates_[t] & -candidates_[t]);
            axes[t] = starts || neighbors_[t].empty() ? lowest : axes[neighbors_[t].back()];
            if (starts)
                queue_.push(t);
            spread();
        }
    }

    const Masks& candidates_;
    std::vector<std::vector<std::size_t>> neighbors_;
    std::queue<std::size_t> queue_;
};

} // namespace

Masks propagatedAxes(const Ids& places, const Masks& candidates)
{
    return Propagation(places, candidates).axes;
}

ImageDirections directionsOf(int axis)
{
    const std::array<ImageDirections, 6> directions{{{Vec3f(0, -1, 0), Vec3f(0, 0, 1)},
                                                     {Vec3f(1, 0, 0), Vec3f(0, 0, 1)},
                                                     {Vec3f(-1, 0, 0), Vec3f(0, 1, 0)},
                                                     {Vec3f(0, 1, 0), Vec3f(0, 0, 1)},
                                                     {Vec3f(-1, 0, 0), Vec3f(0, 0, 1)},
                                                     {Vec3f(1, 0, 0), Vec3f(0, 1, 0)}}};
    return directions[static_cast<std::size_t>(axis)];
}

} // namespace reference
