#pragma once

#include <atomic>
#include <exception>
#include <functional>

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
    double progress() const { return progress_.load(std::memory_order_relaxed); }

    void requestStop() { stop_.store(true, std::memory_order_relaxed); }
    bool stopRequested() const { return stop_.load(std::memory_order_relaxed); }

    /// Throws Stopped when a stop was asked for. Call it at least every few milliseconds' work.
    void checkpoint() const
    {
        if (stopRequested())
            throw Stopped();
    }

private:
    std::atomic<double> progress_{0.0};
    std::atomic<bool> stop_{false};
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
