#include "Unfold3D/seams/Tubes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace unfold3d
{

namespace
{

/// The widest place of a tube is at most this much wider than its narrowest.
constexpr double mostTaper = 2.2;
/// Share of the girth of a tube within which a border beyond its end makes it open, and within
/// which it is said to close.
constexpr double borderWithin = 0.25;
constexpr double capWithin = 0.6;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Links one behind the other. A closed ring of links is no chain.
std::vector<std::vector<int>> findChains(const DistanceBands& bands)
{
    std::vector<std::vector<int>> chains;
    std::vector<char> isDone(at(bands.count()), 0);
    for (int first = 0; first < bands.count(); ++first) {
        if (!bands.isLink(first) || isDone[at(first)])
            continue;
        for (const int outside : bands.neighbours[at(first)]) {
            if (bands.isLink(outside) || isDone[at(first)])
                continue;
            std::vector<int>& chain = chains.emplace_back();
            int from = outside;
            int band = first;
            while (bands.isLink(band) && !isDone[at(band)]) {
                isDone[at(band)] = 1;
                chain.push_back(band);
                from = std::exchange(band, bands.beyond(from, band));
            }
        }
    }
    return chains;
}

class TubeFinder
{
public:
    TubeFinder(const DistanceBands& bands, double leastLength)
        : bands_(bands), leastLength_(leastLength)
    {}

    /// The longest even run of a chain, and then those of what is left on either side.
    void addTubes(std::span<const int> chain)
    {
        std::size_t begin = 0;
        std::size_t end = 0;
        for (std::size_t first = 0; first < chain.size(); ++first) {
            const std::size_t last = endOfEvenRun(chain, first);
            if (last - first > end - begin) {
                begin = first;
                end = last;
            }
        }
        if (end == begin || !addTube(chain.subspan(begin, end - begin)))
            return;
        addTubes(chain.first(begin));
        addTubes(chain.subspan(end));
    }

    std::vector<Tube> take()
    {
        const auto slenderness = [](const Tube& tube) {
            return std::llround(1e3 * tube.length / tube.girth);
        };
        std::stable_sort(tubes_.begin(), tubes_.end(), [&](const Tube& a, const Tube& b) {
            return slenderness(a) > slenderness(b);
        });
        return std::move(tubes_);
    }

private:
    double girth(int band) const { return bands_.girths[at(band)]; }

    std::size_t endOfEvenRun(std::span<const int> chain, std::size_t first) const
    {
        double least = girth(chain[first]);
        double most = least;
        std::size_t end = first;
        for (; end < chain.size(); ++end) {
            least = std::min(least, girth(chain[end]));
            most = std::max(most, girth(chain[end]));
            if (most > mostTaper * least)
                break;
        }
        return end;
    }

    bool addTube(std::span<const int> run)
    {
        Tube tube;
        tube.bands.assign(run.begin(), run.end());
        for (const int band : run)
            tube.girth += girth(band) / static_cast<double>(run.size());
        tube.length = static_cast<double>(run.size()) * bands_.widths[at(run.front())];
        if (!(tube.length >= leastLength_ * tube.girth / std::numbers::pi))
            return false;
        const std::vector<int>& first = bands_.neighbours[at(run.front())];
        tube.start = endBeyond(run.size() > 1 ? run[1] : first.back(), run.front(), tube);
        tube.end =
            endBeyond(run.size() > 1 ? run[run.size() - 2] : first.front(), run.back(), tube);
        tubes_.push_back(std::move(tube));
        return true;
    }

    /// What comes beyond the last band of a tube, `from` being the one before that.
    Tube::End endBeyond(int from, int band, const Tube& tube) const
    {
        for (double way = 0.0; way <= capWithin * tube.girth; way += bands_.widths[at(band)]) {
            if (bands_.meetsBorder[at(band)] && way <= borderWithin * tube.girth)
                return Tube::Open;
            if (bands_.neighbours[at(band)].size() == 1)
                return Tube::Cap;
            if (!bands_.isLink(band))
                return Tube::Body;
            from = std::exchange(band, bands_.beyond(from, band));
        }
        return Tube::Body;
    }

    const DistanceBands& bands_;
    double leastLength_;
    std::vector<Tube> tubes_;
};

} // namespace

std::vector<Tube> findTubes(const DistanceBands& bands, double leastLength)
{
    TubeFinder finder(bands, leastLength);
    for (const std::vector<int>& chain : findChains(bands))
        finder.addTubes(chain);
    return finder.take();
}

} // namespace unfold3d
