#include "UVUtils/compactmesh/WeldClasses.h"

#include "UVUtils/compactmesh/NearRuns.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace
{

/// Runs with more different keys are not tried pair by pair.
constexpr std::size_t maxKeysTried = 256;

auto exactRank(const WeldKey& key)
{
    return std::tuple(orderedBits(key.position[0]), orderedBits(key.position[1]),
                      orderedBits(key.position[2]), orderedBits(key.uv[0]), orderedBits(key.uv[1]));
}

/// One vertex of a run, for sorting.
struct KeyedVertex
{
    WeldKey key;
    unsigned int vertex;
};

class ClassFinder
{
public:
    ClassFinder(const ShellArrays& shell, std::span<const unsigned int> order)
        : shell_(shell), order_(order)
    {
        result_.classOf.resize(order.size());
    }

    WeldClasses find()
    {
        const std::vector<char> goesOn = findNearRuns(sortedPositions());
        for (std::size_t begin = 0; begin < order_.size();) {
            std::size_t end = begin + 1;
            while (goesOn[end - 1])
                ++end;
            if (end - begin == 1)
                result_.classOf[order_[begin]] = result_.count++;
            else
                sortRun(order_.subspan(begin, end - begin));
            begin = end;
        }
        if (!result_.isUnsettled.empty())
            result_.isUnsettled.resize(result_.count);
        return std::move(result_);
    }

private:
    std::vector<osg::Pnt3f> sortedPositions() const
    {
        std::vector<osg::Pnt3f> sorted(order_.size());
        std::transform(order_.begin(), order_.end(), sorted.begin(),
                       [this](unsigned int vertex) { return shell_.positions[vertex]; });
        return sorted;
    }

    /// Equal keys of a run get one class; then near ones join if the order of all is a good one.
    void sortRun(std::span<const unsigned int> vertices)
    {
        run_.clear();
        for (const unsigned int vertex : vertices)
            run_.push_back({shell_.keyOf(vertex), vertex});
        std::sort(run_.begin(), run_.end(), [](const KeyedVertex& a, const KeyedVertex& b) {
            return exactRank(a.key) < exactRank(b.key);
        });
        keys_.clear();
        for (KeyedVertex& item : run_) {
            if (keys_.empty() || exactRank(keys_.back()) != exactRank(item.key))
                keys_.push_back(item.key);
            result_.classOf[item.vertex] = static_cast<unsigned int>(keys_.size() - 1);
        }
        const bool isSettled = rankKeys();
        const unsigned int first = result_.count;
        for (const unsigned int vertex : vertices)
            result_.classOf[vertex] = first + rankOfKey_[result_.classOf[vertex]];
        result_.count += *std::max_element(rankOfKey_.begin(), rankOfKey_.end()) + 1;
        if (!isSettled) {
            result_.isUnsettled.resize(first);
            result_.isUnsettled.resize(result_.count, 1);
        }
    }

    /// Finds the rank of each different key of the run in the tolerant order: equal ranks for equal
    /// keys. Where that order is none, each key gets a rank of its own, and false is returned.
    bool rankKeys()
    {
        rankOfKey_.resize(keys_.size());
        std::iota(rankOfKey_.begin(), rankOfKey_.end(), 0U);
        if (keys_.size() == 1)
            return true;
        if (keys_.size() > maxKeysTried)
            return false;
        std::vector<unsigned int> tried = triedOrder();
        std::vector<unsigned int> ranks(keys_.size());
        for (std::size_t i = 1; i < tried.size(); ++i)
            ranks[i] = ranks[i - 1] + (isLess_(keys_[tried[i - 1]], keys_[tried[i]]) ? 1 : 0);
        if (!isConsistent(tried, ranks))
            return false;
        for (std::size_t i = 0; i < tried.size(); ++i)
            rankOfKey_[tried[i]] = ranks[i];
        return true;
    }

    /// The keys in the tolerant order if it is one, else in any. By insertion, which ends whatever
    /// the comparison says.
    std::vector<unsigned int> triedOrder() const
    {
        std::vector<unsigned int> tried;
        for (unsigned int key = 0; key < keys_.size(); ++key) {
            auto place = tried.end();
            while (place != tried.begin() && isLess_(keys_[key], keys_[*(place - 1)]))
                --place;
            tried.insert(place, key);
        }
        return tried;
    }

    /// Does every pair compare as its ranks do? Then it is a strict weak order.
    bool isConsistent(const std::vector<unsigned int>& tried,
                      const std::vector<unsigned int>& ranks) const
    {
        for (std::size_t i = 0; i < tried.size(); ++i)
            for (std::size_t j = i + 1; j < tried.size(); ++j) {
                const WeldKey& a = keys_[tried[i]];
                const WeldKey& b = keys_[tried[j]];
                if (isLess_(a, b) != (ranks[i] < ranks[j]) || isLess_(b, a))
                    return false;
            }
        return true;
    }

    const ShellArrays& shell_;
    std::span<const unsigned int> order_;
    WeldClasses result_;
    WeldKeyLess isLess_;

    // Of the run at hand:
    std::vector<KeyedVertex> run_;
    std::vector<WeldKey> keys_; ///< the different ones
    std::vector<unsigned int> rankOfKey_;
};

} // namespace

WeldClasses findWeldClasses(const ShellArrays& shell, std::span<const unsigned int> order)
{
    return ClassFinder(shell, order).find();
}
