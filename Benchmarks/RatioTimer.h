#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <limits>

namespace bench
{

inline double secondsBy(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Of this thread on a processor, so that what else runs counts little.
inline double processorSeconds()
{
    return secondsBy(CLOCK_THREAD_CPUTIME_ID);
}

/// Times an operation and a plain loop over the same data in turn. What it reports as "ratio", the
/// best time of the one by the best of the other, is what counts, since both share the machine.
class RatioTimer
{
public:
    /// clock  for work on several threads CLOCK_MONOTONIC, which means something on a quiet machine
    explicit RatioTimer(clockid_t clock = CLOCK_THREAD_CPUTIME_ID) : clock_(clock) {}

    /// One iteration of a benchmark that uses manual time.
    template <class Operation, class Reference>
    void run(benchmark::State& state, const Operation& operation, const Reference& reference)
    {
        run(state, operation, reference, [] {});
    }
    /// The same with untimed work after the reference and before the operation.
    template <class Operation, class Reference, class Between>
    void run(benchmark::State& state, const Operation& operation, const Reference& reference,
             const Between& between)
    {
        referenceBest_ = std::min(referenceBest_, secondsOf(reference));
        between();
        const double seconds = secondsOf(operation);
        operationBest_ = std::min(operationBest_, seconds);
        state.SetIterationTime(seconds);
    }
    /// Of the operation, in seconds.
    [[nodiscard]] double best() const { return operationBest_; }
    void report(benchmark::State& state) const
    {
        state.counters["ratio"] = operationBest_ / referenceBest_;
        state.counters["best_ms"] = 1e3 * operationBest_;
    }

private:
    template <class Work>
    [[nodiscard]] double secondsOf(const Work& work) const
    {
        const double start = secondsBy(clock_);
        work();
        return secondsBy(clock_) - start;
    }

    clockid_t clock_;
    double operationBest_ = std::numeric_limits<double>::infinity();
    double referenceBest_ = std::numeric_limits<double>::infinity();
};

/// A whole benchmark of an operation that needs nothing made ready in between.
template <class Operation, class Reference>
void measureRatio(benchmark::State& state, const Operation& operation, const Reference& reference)
{
    RatioTimer timer;
    for (auto _ : state)
        timer.run(state, operation, reference);
    timer.report(state);
}

} // namespace bench
