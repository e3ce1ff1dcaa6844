#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>

namespace unfold3d
{

/// Thrown out of a stage when the caller asked to stop; the command that runs the stage catches it.
class Stopped : public std::exception
{
public:
    const char* what() const noexcept override { return "stopped"; }
};

/// How a stage tells how far it is and learns that it shall stop. Both may be called from any
/// thread: the stage runs on threads of its own, while the thread that gave the command carries
/// progress and the wish to stop between this record and the caller's callbacks.
class RunControl
{
public:
    /// Progress of the command, 0 to 1. Lower values than the last are passed over.
    void setProgress(double fraction);
    /// Goes a share of the way that is left to `end`: for steps of which nobody knows how many
    /// there will be.
    void approach(double end, double share);
    /// What the caller is told: the progress that was set, and a little for each checkpoint since
    /// the command began. So it rises as long as work is done, even where a stage can't tell how
    /// far it is.
    double progress() const;

    void requestStop() { stop_.store(true, std::memory_order_relaxed); }
    bool stopRequested() const { return stop_.load(std::memory_order_relaxed); }

    /// From the given checkpoint on, counted from 0, there is a stop: for tests, which want it to
    /// come at the same place on every run.
    void stopAtCheckpoint(std::int64_t number) { lastCheckpoint_ = number; }

    /// Throws Stopped when a stop was asked for. Call it at least every few milliseconds' work, and
    /// not much more often than every few microseconds.
    void checkpoint() const
    {
        if (checkpoints_.fetch_add(1, std::memory_order_relaxed) >= lastCheckpoint_ ||
            stopRequested())
            throw Stopped();
    }

private:
    std::atomic<double> progress_{0.0};
    std::atomic<bool> stop_{false};
    mutable std::atomic<std::int64_t> checkpoints_{0}; ///< passed so far
    std::int64_t lastCheckpoint_ = std::numeric_limits<std::int64_t>::max();
};

using ProgressCallback = void (*)(double fraction);
using StopCallback = bool (*)();

/// Runs `work` on a thread of its own, while this thread calls `progress` as the work goes on, and
/// `stop` to learn whether it shall end. Either callback may be null. The last call of `progress`
/// after work that wasn't stopped is with 1.0.
///
/// Returns false when the work ended by Stopped; any other exception comes through to the caller.
bool runWatched(ProgressCallback progress, StopCallback stop,
                const std::function<void(RunControl&)>& work);

} // namespace unfold3d
