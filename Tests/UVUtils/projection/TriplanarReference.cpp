#include "UVUtils/projection/TriplanarReference.h"

#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <queue>
#include <set>

using osg::Pnt3f;
using osg::Vec3f;

namespace
{

const std::array<Vec3f, 6> axes{Vec3f(1, 0, 0),  Vec3f(0, 1, 0),  Vec3f(0, 0, 1),
                                Vec3f(-1, 0, 0), Vec3f(0, -1, 0), Vec3f(0, 0, -1)};

/// The axes less than 60 degrees away, ascending. With whole numbers the angle is never just 60.
std::vector<int> candidatesOf(const Vec3f& m)
{
    std::vector<int> result;
    for (int axis = 0; axis < 6; ++axis) {
        const double along = m.dot(axes[static_cast<std::size_t>(axis)]);
        if (along > 0 && 4 * along * along > static_cast<double>(m.squareLength()))
            result.push_back(axis);
    }
    return result;
}

/// Of equal components the last one counts.
int dominantAxisOf(const Vec3f& m)
{
    int largest = 0;
    for (int k = 1; k < 3; ++k)
        if (std::abs(m[static_cast<unsigned>(k)]) >= std::abs(m[static_cast<unsigned>(largest)]))
            largest = k;
    return m[static_cast<unsigned>(largest)] > 0 ? largest : largest + 3;
}

class Propagation
{
public:
    Propagation(const std::vector<Pnt3f>& corners, std::vector<std::vector<int>> candidates)
        : candidates_(std::move(candidates)), axes_(candidates_.size(), -1),
          neighbors_(candidates_.size())
    {
        for (std::size_t t = 0; t < axes_.size(); ++t)
            if (candidates_[t].size() == 1)
                axes_[t] = candidates_[t][0];
        findNeighbors(corners);
        pushFront();
        spread();
        chooseWhere([](std::size_t count) { return count == 2; });
        chooseWhere([](std::size_t count) { return count >= 3; });
    }

    std::vector<int> axes() const { return axes_; }

private:
    void findNeighbors(const std::vector<Pnt3f>& corners)
    {
        std::map<std::array<float, 3>, unsigned> numberOf;
        std::vector<unsigned> places;
        places.reserve(corners.size());
        for (const Pnt3f& p : corners)
            places.push_back(
                numberOf.try_emplace({p[0], p[1], p[2]}, static_cast<unsigned>(numberOf.size()))
                    .first->second);
        const auto edgeOf = [&](std::size_t t, std::size_t k) {
            return std::minmax(
                {unsigned{places[3 * t + k]}, unsigned{places[3 * t + (k + 1) % 3]}});
        };
        std::map<std::pair<unsigned, unsigned>, std::vector<std::size_t>> trianglesOf;
        for (std::size_t t = 0; t < axes_.size(); ++t)
            for (const std::size_t k : {0U, 1U, 2U})
                trianglesOf[edgeOf(t, k)].push_back(t);
        for (std::size_t t = 0; t < axes_.size(); ++t)
            for (const std::size_t k : {0U, 1U, 2U})
                if (const auto& there = trianglesOf[edgeOf(t, k)]; there.size() < 3)
                    for (const std::size_t other : there)
                        if (other != t)
                            neighbors_[t].push_back(other);
    }

    bool hasOpenNeighbor(std::size_t t) const
    {
        return std::any_of(neighbors_[t].begin(), neighbors_[t].end(),
                           [this](std::size_t x) { return axes_[x] < 0; });
    }

    void pushFront()
    {
        for (const int axis : {0, 3, 1, 4, 2, 5})
            for (std::size_t t = 0; t < axes_.size(); ++t)
                if (axes_[t] == axis && hasOpenNeighbor(t))
                    queue_.push(t);
    }

    void spread()
    {
        for (; !queue_.empty(); queue_.pop())
            for (const std::size_t x : neighbors_[queue_.front()]) {
                const int axis = axes_[queue_.front()];
                if (axes_[x] >= 0 || std::find(candidates_[x].begin(), candidates_[x].end(),
                                               axis) == candidates_[x].end())
                    continue;
                axes_[x] = axis;
                queue_.push(x);
            }
    }

    void chooseWhere(const std::function<bool(std::size_t)>& accepts)
    {
        for (std::size_t t = 0; t < axes_.size(); ++t) {
            if (axes_[t] >= 0 || !accepts(candidates_[t].size()))
                continue;
            const bool starts = hasOpenNeighbor(t);
            axes_[t] =
                starts || neighbors_[t].empty() ? candidates_[t][0] : axes_[neighbors_[t].back()];
            if (starts)
                queue_.push(t);
            spread();
        }
    }

    std::vector<std::vector<int>> candidates_;
    std::vector<int> axes_;
    std::vector<std::vector<std::size_t>> neighbors_;
    std::queue<std::size_t> queue_;
};

} // namespace

std::vector<int> axesByMaps(const std::vector<Pnt3f>& corners, bool propagate)
{
    std::vector<std::vector<int>> candidates;
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        const Vec3f m = (corners[i + 2] - corners[i]).cross(corners[i + 1] - corners[i]);
        candidates.push_back(propagate ? candidatesOf(m) : std::vector{dominantAxisOf(m)});
    }
    return Propagation(corners, candidates).axes();
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
