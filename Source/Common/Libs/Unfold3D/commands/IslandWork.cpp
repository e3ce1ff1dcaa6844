#include "Unfold3D/commands/IslandWork.h"

#include <algorithm>
#include <atomic>

#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

/// The progress of many islands that are worked on at the same time, each counting by its size.
class SharedProgress
{
public:
    SharedProgress(RunControl& control, std::int64_t total) : control_(control), total_(total) {}
    void add(std::int64_t done)
    {
        const std::int64_t sum = done_.fetch_add(done) + done;
        control_.setProgress(static_cast<double>(sum) / static_cast<double>(total_));
    }

private:
    RunControl& control_;
    std::int64_t total_;
    std::atomic<std::int64_t> done_{0};
};

} // namespace

std::vector<IslandLayout> workOnIslands(const Session& session, const std::vector<int>& chosen,
                                        const IslandWork& work, RunControl& control)
{
    // Units fine enough that every step of a large island moves the bar.
    constexpr std::int64_t unitsPerTriangle = 1'000'000;
    const auto sizeOf = [&](int island) {
        return unitsPerTriangle *
               static_cast<std::int64_t>(session.islands.triangles[island].size());
    };
    std::int64_t total = 1;
    std::vector<std::size_t> largestFirst;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        total += sizeOf(chosen[i]);
        largestFirst.push_back(i);
    }
    std::stable_sort(largestFirst.begin(), largestFirst.end(), [&](std::size_t a, std::size_t b) {
        return sizeOf(chosen[a]) > sizeOf(chosen[b]);
    });

    SharedProgress shared(control, total);
    std::vector<IslandLayout> results(chosen.size());
    tbb::parallel_for(std::size_t{0}, chosen.size(), [&](std::size_t k) {
        const std::size_t i = largestFirst[k];
        control.checkpoint();
        std::int64_t told = 0;
        const auto tell = [&](double fraction) {
            const auto done =
                static_cast<std::int64_t>(fraction * static_cast<double>(sizeOf(chosen[i])));
            shared.add(std::max<std::int64_t>(done - told, 0));
            told = std::max(told, done);
        };
        results[i] = work(chosen[i], tell);
        tell(1.0);
    });
    return results;
}

} // namespace unfold3d
