#include "Unfold3D/packing/TimeLimit.h"

#include <cmath>

namespace unfold3d
{

TimeLimit::~TimeLimit()
{
    {
        const std::scoped_lock lock(mutex_);
        isSearchOver_ = true;
    }
    searchEnds_.notify_one();
    if (watcher_.joinable())
        watcher_.join();
}

bool TimeLimit::exists() const
{
    return std::isfinite(seconds_);
}

void TimeLimit::enforce(RunControl& control)
{
    if (exists() && !watcher_.joinable())
        watcher_ = std::thread([this, &control] { watch(control); });
}

void TimeLimit::watch(RunControl& control)
{
    const std::chrono::duration<double> limit(seconds_);
    std::unique_lock lock(mutex_);
    const auto end = begin_ + std::chrono::duration_cast<Clock::duration>(limit);
    if (!searchEnds_.wait_until(lock, end, [this] { return isSearchOver_; }))
        control.requestStop();
}

} // namespace unfold3d
