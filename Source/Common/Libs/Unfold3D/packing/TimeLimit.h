#pragma once

#include "Unfold3D/base/RunControl.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace unfold3d
{

/// Asks for a stop when the time of a search is over: for one that has a result at any moment.
class TimeLimit
{
public:
    /// The time runs from now on. Without an end when `seconds` isn't finite.
    explicit TimeLimit(double seconds) : seconds_(seconds), begin_(Clock::now()) {}
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;
    ~TimeLimit();

    bool exists() const;

    /// From now on the limit counts: what has to be there in any case is. Once is enough.
    void enforce(RunControl& control);

private:
    using Clock = std::chrono::steady_clock;

    void watch(RunControl& control);

    double seconds_;
    Clock::time_point begin_;
    std::mutex mutex_;
    std::condition_variable searchEnds_;
    bool isSearchOver_ = false;
    std::thread watcher_;
};

} // namespace unfold3d
