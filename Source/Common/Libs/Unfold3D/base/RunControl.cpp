#include "Unfold3D/base/RunControl.h"

#include <chrono>
#include <future>

namespace unfold3d
{

namespace
{

/// Checkpoints move progress by less than this share of what is left, half of it with so many.
constexpr double shareOfCheckpoints = 0.01;
constexpr double checkpointsOfHalf = 1e6;

} // namespace

void RunControl::setProgress(double fraction)
{
    double present = progress_.load(std::memory_order_relaxed);
    while (fraction > present &&
           !progress_.compare_exchange_weak(present, fraction, std::memory_order_relaxed))
    {
    }
}

void RunControl::approach(double end, double share)
{
    const double present = progress_.load(std::memory_order_relaxed);
    setProgress(present + share * (end - present));
}

double RunControl::progress() const
{
    const double set = progress_.load(std::memory_order_relaxed);
    const auto passed = static_cast<double>(checkpoints_.load(std::memory_order_relaxed));
    return set + (1.0 - set) * shareOfCheckpoints * passed / (passed + checkpointsOfHalf);
}

bool runWatched(ProgressCallback progress, StopCallback stop,
                const std::function<void(RunControl&)>& work)
{
    constexpr std::chrono::milliseconds pollInterval(20);
    RunControl control;
    std::future<void> done = std::async(std::launch::async, [&] { work(control); });

    while (done.wait_for(pollInterval) != std::future_status::ready) {
        if (stop && stop())
            control.requestStop();
        const double present = control.progress();
        // 1.0 is kept for the end: the work isn't done yet.
        if (progress && present < 1.0)
            progress(present);
    }
    try {
        done.get();
    } catch (const Stopped&) {
        return false;
    }
    if (progress)
        progress(1.0);
    return true;
}

} // namespace unfold3d
