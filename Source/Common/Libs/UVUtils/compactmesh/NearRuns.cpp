#include "UVUtils/compactmesh/NearRuns.h"

#include "UVUtils/compactmesh/WeldKey.h"

#include <algorithm>
#include <numeric>

namespace
{

using Places = std::span<unsigned int>;

/// Looks for near pairs among different positions, one axis after the other: sorted by an axis,
/// only what lies in one chain of small steps can be near.
class NearSearch
{
public:
    explicit NearSearch(std::span<const osg::Pnt3f> sorted)
        : sorted_(sorted), furthest_(sorted.size())
    {
        std::iota(furthest_.begin(), furthest_.end(), 0U);
    }

    void joinNear(Places places, unsigned int axis)
    {
        const auto isBefore = [&](unsigned int a, unsigned int b) {
            return orderedBits(sorted_[a][axis]) < orderedBits(sorted_[b][axis]);
        };
        if (!std::is_sorted(places.begin(), places.end(), isBefore))
            std::stable_sort(places.begin(), places.end(), isBefore);
        for (std::size_t begin = 0; begin < places.size();) {
            std::size_t end = begin + 1;
            while (end < places.size() && isStepNear(places[end - 1], places[end], axis))
                ++end;
            if (end - begin > 1)
                joinInChain(places.subspan(begin, end - begin), axis);
            begin = end;
        }
    }

    /// Tells runs from the pairs found.
    std::vector<char> takeRuns() const
    {
        std::vector<char> goesOn(sorted_.size());
        unsigned int reach = 0;
        for (unsigned int place = 0; place + 1 < sorted_.size(); ++place) {
            reach = std::max(reach, furthest_[place]);
            goesOn[place] = reach > place ? 1 : 0;
        }
        return goesOn;
    }

    void join(unsigned int a, unsigned int b)
    {
        furthest_[std::min(a, b)] = std::max(furthest_[std::min(a, b)], std::max(a, b));
    }

private:
    bool isStepNear(unsigned int a, unsigned int b, unsigned int axis) const
    {
        return isNear(sorted_[a][axis], sorted_[b][axis]);
    }

    void joinInChain(Places chain, unsigned int axis)
    {
        constexpr unsigned int lastAxis = 2;
        if (hasFewPairs(chain, axis))
            joinPairs(chain, axis);
        else if (axis < lastAxis)
            joinNear(chain, axis + 1);
        else
            join(*std::min_element(chain.begin(), chain.end()),
                 *std::max_element(chain.begin(), chain.end()));
    }

    /// Can each pair that is near on this axis be looked at?
    bool hasFewPairs(Places chain, unsigned int axis) const
    {
        constexpr std::size_t affordablePairsEach = 8;
        std::size_t pairs = 0;
        std::size_t end = 0;
        for (std::size_t i = 0; i < chain.size(); ++i) {
            end = std::max(end, i + 1);
            while (end < chain.size() && isStepNear(chain[i], chain[end], axis))
                ++end;
            pairs += end - i - 1;
        }
        return pairs <= affordablePairsEach * chain.size();
    }

    void joinPairs(Places chain, unsigned int axis)
    {
        for (std::size_t i = 0; i < chain.size(); ++i)
            for (std::size_t j = i + 1; j < chain.size() && isStepNear(chain[i], chain[j], axis);
                 ++j)
                if (isNear(sorted_[chain[i]], sorted_[chain[j]]))
                    join(chain[i], chain[j]);
    }

    std::span<const osg::Pnt3f> sorted_;
    std::vector<unsigned int> furthest_; ///< [place] up to where its run goes at least
};

bool isSame(const osg::Pnt3f& a, const osg::Pnt3f& b)
{
    return orderedBits(a[0]) == orderedBits(b[0]) && orderedBits(a[1]) == orderedBits(b[1]) &&
           orderedBits(a[2]) == orderedBits(b[2]);
}

} // namespace

std::vector<char> findNearRuns(std::span<const osg::Pnt3f> sorted)
{
    NearSearch search(sorted);
    std::vector<unsigned int> firstPlaces; // of each different position
    firstPlaces.reserve(sorted.size());
    for (unsigned int place = 0; place < sorted.size(); ++place) {
        if (place > 0 && isSame(sorted[place - 1], sorted[place]))
            search.join(place - 1, place);
        else
            firstPlaces.push_back(place);
    }
    search.joinNear(firstPlaces, 0);
    return search.takeRuns();
}
