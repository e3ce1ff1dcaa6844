#include "Unfold3D/base/RunControl.h"

#include <chrono>
#include <future>

namespace unfold3d
{

void RunControl::setProgress(double fraction)
{
    double present = progress_.load(std::memory_order_relaxed);
    while (fraction > present &&
           !progress_.compare_exchange_weak(present, fraction, std::memory_order_relaxed))
    {
    }
}

bool runWatched(ProgressCallback progress, StopCallback stop,
                const std::function<void(RunControl&)>& work)
{
    constexpr std::chrono::milliseconds pollInterval(20);
    RunControl control;
    std::future<void> done = std::async(std::launch::async, [&] { work(control); });

    double reported = 0.0;
    while (done.wait_for(pollInterval) != std::future_status::ready) {
        if (stop && stop())
            control.requestStop();
        const double present = control.progress();
        // 1.0 is kept for the end: the work isn't done yet.
        if (progress && present < 1.0)
            progress(reported = present);
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
